# What has no window is compiled to be small: the engine is there all day, and most of its memory is its own code, of
# which the system takes in what lies around what is used. Sections of their own let the linker leave out what nobody
# calls.
add_library(skarn_small INTERFACE)
target_compile_options(skarn_small INTERFACE
  "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-Os;-ffunction-sections;-fdata-sections>")
