# Completion of tessaly-cli for bash. Commands and options are asked of the program itself, by --help, and the
# functions of the site by "dictionary --list", segment by segment.

_tessaly_cli_files() { # [compgen action]: names of files, or of folders with -d
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen "${1:--f}" -- "$cur")
}

_tessaly_cli_words() { # WORDS
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
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
    A | B | FILE* | KEY* | PATH) _tessaly_cli_files ;;
    DIR | FOLDER) _tessaly_cli_files -d ;;
    FID) _tessaly_cli_functions "${2:-}" ;;
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
  local cur=${COMP_WORDS[COMP_CWORD]} word command='' previous='' usage i
  local -a program=("${COMP_WORDS[0]/#\~/$HOME}") operands=()
  COMPREPLY=()
  for ((i = 1; i < COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    if [[ $word == --root && $((i + 1)) -lt $COMP_CWORD ]]; then
      program+=(--root "${COMP_WORDS[++i]/#\~/$HOME}")
    elif [[ -z $command && $word != -* ]]; then
      command=$word
    elif [[ -n $command ]]; then
      operands+=("$word")
    fi
    previous=$word
  done
  if [[ ${COMP_WORDS[COMP_CWORD - 1]} == --root ]]; then
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
      places[place++]=${operands[i]}
    fi
  done
  if [[ $command == panel ]]; then
    case $place in
      1) _tessaly_cli_words "list get put delete rename run watch compare send snapshot restore" ;;
      2) _tessaly_cli_operand "$([[ ${places[1]} == snapshot || ${places[1]} == restore ]] && echo FILE || echo W)" ;;
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

complete -F _tessaly_cli tessaly-cli
