# Completion of the three programs for bash. Commands and options are asked of the program itself, by --help, the
# functions of the site by "dictionary --list", segment by segment, and its applications by "list".

# The words before the cursor, as they were typed; readline has cut them at each ":" and "=".
_tessaly_words() { # sets words, and cur to the last one
  local line=$COMP_LINE before word i
  words=()
  for ((i = 0; i <= COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    before=$line
    line=${line#"${line%%[! ]*}"}
    if [[ $i -gt 0 && $line == "$before" && ($word == [:=]* || ${words[-1]} == *[:=]) ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
    line=${line#"$word"}
  done
  # The value of an option may follow a "=" or a blank.
  [[ ${words[-1]} == --*=* ]] && words+=("${words[-1]#*=}") && words[-2]=${words[-2]%%=*}
  cur=${words[-1]}
}

# A word without its quotes and backslashes.
_tessaly_plain() {
  if [[ $1 == [\'\"]* ]]; then
    local inside=${1:1}
    printf '%s' "${inside%[\'\"]}"
  else
    # shellcheck disable=SC2001
    sed 's/\\\(.\)/\1/g' <<<"$1"
  fi
}

_tessaly_root() {
  if [[ ${program[1]:-} == --root ]]; then
    printf '%s' "${program[2]}"
  else
    printf '%s' "${TESSALY_ROOT:-${XDG_DATA_HOME:-$HOME/.local/share}/tessaly}"
  fi
}

# The entries of the site that go on from a path with a drive letter, whatever the case of its letters; false
# when the word is none.
_tessaly_site_files() { # [-d]
  local quote='' plain folder rest part entry match separator
  [[ $cur != [\'\"]* ]] || quote=${cur:0:1}
  plain=$(_tessaly_plain "$cur")
  [[ $plain == [A-Za-z]:* ]] || return 1
  separator=${plain//[!\\\/]/}
  separator=${separator: -1}
  [[ -n $separator ]] || { [[ -n $quote ]] && separator=\\ || separator=/; }
  folder=$(_tessaly_root)
  rest=${plain//\\//}
  rest=${rest/:/\/}
  rest=$(tr -s / <<<"$rest")
  while [[ $rest == */* ]]; do
    part=${rest%%/*}
    rest=${rest#*/}
    match=''
    for entry in "$folder"/*; do
      [[ ${entry##*/} == "$part" ]] && match=$entry && break
      [[ -z $match ]] && entry=${entry##*/} && [[ ${entry,,} == "${part,,}" ]] && match=$folder/$entry
    done
    folder=$match
    [[ -n $folder ]] || return 0
  done
  local lead=${plain%"$rest"}
  [[ $lead == *[\\/] ]] || lead+=$separator
  for entry in "$folder"/*; do
    [[ -e $entry && (-d $entry || ${1:-} != -d) ]] || continue
    part=${entry##*/}
    [[ ${part,,} == "${rest,,}"* ]] || continue
    part=$lead$part
    [[ -d $entry ]] && part+=$separator && compopt -o nospace 2>/dev/null
    # shellcheck disable=SC2001
    [[ -n $quote ]] || part=$(sed 's/[] \\"'"'"'()&;|<>$`*?!#[]/\\&/g' <<<"$part")
    COMPREPLY+=("$part")
  done
  # readline ends the quotes behind the only one there is, as if no folder went on.
  if [[ -n $quote && ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *"$separator" ]]; then
    for entry in "$folder/${COMPREPLY[0]:${#lead}:-1}"/*; do COMPREPLY+=("${COMPREPLY[0]}${entry##*/}"); done
  fi
  # readline keeps what stands before the last ":" of a word without quotes.
  [[ -n $quote ]] || COMPREPLY=("${COMPREPLY[@]#*:}")
}

_tessaly_cli_files() { # [compgen action]: names of files, or of folders with -d
  ! _tessaly_site_files "$@" || return 0
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen "${1:--f}" -- "$cur")
}

_tessaly_cli_words() { # WORDS
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}

# Lines that may have blanks in them, as names of applications do.
_tessaly_cli_lines() {
  local line plain
  plain=$(_tessaly_plain "$cur")
  while IFS= read -r line; do [[ $line != "$plain"* ]] || COMPREPLY+=("$line"); done
  compopt -o filenames 2>/dev/null
}

_tessaly_cli_commands() {
  _tessaly_cli_words "$("${program[0]}" --help | awk '/^  [a-z]/ { print $1 }')"
}

# The names that go on from the word, up to the next "." where they part.
_tessaly_cli_functions() {
  local destination='' rest=$cur
  if [[ $cur =~ ^(QMF[1-4]|PANEL)\. ]]; then
    destination=${BASH_REMATCH[0]}
    rest=${cur#"$destination"}
  elif [[ ${1:-} == prefixed ]]; then
    compopt -o nospace 2>/dev/null
    _tessaly_cli_words "QMF1. QMF2. QMF3. QMF4. PANEL."
    return
  fi
  mapfile -t COMPREPLY < <(
    "${program[@]}" dictionary --list "$rest" 2>/dev/null | awk -v typed="$rest" -v lead="$destination" '
      NR > 1 && index($0, typed) == 1 {
        dot = index(substr($0, length(typed) + 1), ".")
        name = dot ? substr($0, 1, length(typed) + dot) : $0
        if (!seen[name]++) print lead name
      }'
  )
  [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} != *. ]] || compopt -o nospace 2>/dev/null
}

_tessaly_cli_parameters() { # FID, what follows a name
  local function=$1
  [[ $function =~ ^(QMF[1-4]|PANEL)\.(.*)$ ]] && function=${BASH_REMATCH[2]}
  [[ -n $2 ]] && compopt -o nospace 2>/dev/null
  _tessaly_cli_words "$("${program[@]}" dictionary --show "$function" 2>/dev/null |
    awk -v tail="$2" '$1 == "parameter:" { print $3 tail }')"
}

# What may stand at the place of a usage word, such as FILE.
_tessaly_cli_operand() {
  case $1 in
    A | B | FILE* | KEY* | PATH | SOURCE) _tessaly_cli_files ;;
    DIR | FOLDER) _tessaly_cli_files -d ;;
    FID) _tessaly_cli_functions "${2:-}" ;;
    APPLICATION | CP)
      _tessaly_cli_lines < <("${program[@]}" list "${places[@]}" 2>/dev/null | cut -f 1)
      ;;
    W) _tessaly_cli_words "1 2 3 4 5 6 7 8" ;;
    M) _tessaly_cli_words "1 2 3 4" ;;
    S) _tessaly_cli_words "note warning error" ;;
    F) _tessaly_cli_words "pdf html csv" ;;
    SIZE) _tessaly_cli_words "a4 a5 letter" ;;
    RULE)
      compopt -o nospace 2>/dev/null
      _tessaly_cli_words "destination: segment: source: value:"
      ;;
    *'|'*) _tessaly_cli_words "$(tr '|' '\n' <<<"$1" | grep '^[a-z]')" ;;
  esac
}

_tessaly_cli() {
  local cur word command='' previous='' usage i
  local -a words program operands=()
  COMPREPLY=()
  _tessaly_words
  program=("${words[0]/#\~/$HOME}")
  for ((i = 1; i < ${#words[@]} - 1; ++i)); do
    word=${words[i]}
    if [[ $word == --root && $((i + 2)) -lt ${#words[@]} ]]; then
      ((++i))
      word=$(_tessaly_plain "${words[i]}")
      program+=(--root "${word/#\~/$HOME}")
    elif [[ $word == --root=* ]]; then
      word=$(_tessaly_plain "${word#*=}")
      program+=(--root "${word/#\~/$HOME}")
    elif [[ -z $command && $word != -* ]]; then
      command=$word
    elif [[ -n $command ]]; then
      operands+=("$word")
    fi
    previous=$word
  done
  if [[ ${words[-2]} == --root ]]; then
    _tessaly_cli_operand DIR
    return
  fi
  if [[ -z $command ]]; then
    if [[ $cur == -* ]]; then
      _tessaly_cli_words "--root --help --version"
    else
      _tessaly_cli_commands
    fi
    return
  fi

  usage=$("${program[0]}" "$command" --help 2>/dev/null | sed '/^$/q' | tr -s '\n ' ' ')
  usage=${usage#"usage: tessaly-cli $command "}
  # The value of an option that stands before the word: what the usage names after it.
  if [[ $previous == --* && $usage =~ $previous\ ([A-Za-z|]+) ]]; then
    _tessaly_cli_operand "${BASH_REMATCH[1]}"
    return
  fi
  if [[ $cur == -* ]]; then
    _tessaly_cli_words "$(grep -o -e '--[a-z-]*' <<<"$usage") --root --help --version"
    return
  fi
  _tessaly_cli_place
}

# A word that is no option: counts the places before it and looks at the usage for what stands there.
_tessaly_cli_place() {
  local -a places=()
  local place=0
  for ((i = 0; i < ${#operands[@]}; ++i)); do
    if [[ ${operands[i]} == --* ]]; then
      [[ $usage =~ ${operands[i]}\ [A-Za-z|] ]] && ((++i))
    else
      places[place++]=$(_tessaly_plain "${operands[i]}")
    fi
  done
  if [[ $command == panel ]]; then
    case $place in
      1) _tessaly_cli_words "list get put delete rename run update watch compare send replace snapshot restore" ;;
      2)
        case ${places[1]} in
          snapshot | restore | update) _tessaly_cli_operand FILE ;;
          watch) ;;
          *) _tessaly_cli_operand W ;;
        esac
        ;;
      3)
        [[ ${places[1]} == restore ]] && _tessaly_cli_operand W
        [[ ${places[1]} == compare || ${places[1]} == send ]] && _tessaly_cli_operand FOLDER
        ;;
      4) [[ ${places[1]} == [gp]?t ]] && _tessaly_cli_operand FILE ;;
    esac
    return
  fi
  if [[ $command == history ]]; then
    case $place in
      0) _tessaly_cli_words "show restore" ;;
      1) _tessaly_cli_words "$("${program[@]}" history 2>/dev/null | cut -f 1)" ;;
      2) [[ ${places[0]} == restore ]] && _tessaly_cli_operand FILE ;;
    esac
    return
  fi
  if [[ $command == help ]]; then
    [[ $place -gt 0 ]] || _tessaly_cli_commands
    return
  fi
  if [[ $command == list ]]; then
    _tessaly_cli_operand "$(cut -d ' ' -f $((place + 1)) <<<"PATH APPLICATION CP W")"
    return
  fi
  if [[ $command == copy-macro ]]; then # the last one may be a folder or another source
    _tessaly_cli_operand FILE
    return
  fi
  local -a expected=()
  read -r -a expected < <(sed -e 's/\[[^]]*\]*//g; s/([^)]*)//g' <<<"$usage")
  # "PATH ..." stands for one and more.
  while [[ $place -gt 0 && ${expected[place]:-...} == ... && " ${expected[*]} " == *" ... "* ]]; do ((place--)); done
  if [[ $command == insert && $place -ge 2 ]]; then
    _tessaly_cli_parameters "${places[1]}" =
  elif [[ $command == value && $place -eq 1 ]]; then
    _tessaly_cli_parameters "${places[0]}" ""
  else
    _tessaly_cli_operand "${expected[place]:-}" "$([[ $command == insert ]] && echo prefixed)"
  fi
}

# The window and the simulated panel: options, and what an option takes.
_tessaly_options() {
  local cur help value
  local -a words program
  COMPREPLY=()
  _tessaly_words
  program=("${words[0]/#\~/$HOME}")
  help=$("${program[0]}" --help 2>/dev/null)
  value=$(sed -n "s/^  ${words[-2]} \\([A-Z][A-Z,.]*\\)  *\\(.*\\)/\\1 \\2/p" <<<"$help")
  case $value in
    DIR*) _tessaly_cli_files -d ;;
    FILE*) _tessaly_cli_files ;;
    NAME*) # "NAME colours: desktop, light or dark; else those chosen last"
      _tessaly_cli_words "$(sed 's/^NAME//; s/;.*//; s/.*://; s/,/ /g; s/ or / /g' <<<"$value")"
      ;;
    '') _tessaly_cli_words "$(grep -o -E '^  --[a-z-]+' <<<"$help")" ;;
  esac
}

complete -F _tessaly_cli tessaly-cli
complete -F _tessaly_options tessaly tessaly-panelsim
