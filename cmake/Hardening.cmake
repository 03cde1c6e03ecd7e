# What release builds are hardened with. Sanitized builds have checks of their own, which these would hide.
include(CheckCXXCompilerFlag)

if(NOT SKARN_SANITIZE)
  set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  add_compile_options("$<${optimised}:-fPIE;-fstack-protector-strong;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"
    "$<${optimised}:-D_GLIBCXX_ASSERTIONS>")
  # Of x86 only.
  check_cxx_compiler_flag(-fcf-protection SKARN_HAS_CF_PROTECTION)
  if(SKARN_HAS_CF_PROTECTION)
    add_compile_options($<${optimised}:-fcf-protection>)
  endif()
  add_link_options("$<${optimised}:-pie;LINKER:-z,relro,-z,now>")
endif()
