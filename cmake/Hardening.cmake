# What makes a fault in memory end the program rather than run somebody else's code. tests/hardening.sh checks that
# the programs have it. The sanitizers see more, and do not go with it.
if(WIN32)
  target_link_options(tessaly_settings INTERFACE -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
elseif(NOT TESSALY_SANITIZE)
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection TESSALY_HAS_CF_PROTECTION)
  check_cxx_compiler_flag(-fstack-clash-protection TESSALY_HAS_STACK_CLASH_PROTECTION)
  target_compile_options(tessaly_settings INTERFACE
    -fPIE -fstack-protector-strong
    $<$<BOOL:${TESSALY_HAS_STACK_CLASH_PROTECTION}>:-fstack-clash-protection>
    $<$<BOOL:${TESSALY_HAS_CF_PROTECTION}>:-fcf-protection>
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>  # it needs optimisation
    $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  target_link_options(tessaly_settings INTERFACE -pie -Wl,-z,relro,-z,now,-z,noexecstack)
endif()
