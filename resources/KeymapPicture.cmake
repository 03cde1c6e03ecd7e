# cmake -DIN=mouse.svg -DOUT=keymap3.svg -DNUMBER=3 -DTINT=#rrggbb -P KeymapPicture.cmake
#
# Shows the hidden number keymapNumber3 of the drawing and replaces its tint, the one colour #e4572e, by TINT.
file(READ ${IN} drawing)
set(hidden "<g id=\"keymapNumber${NUMBER}\" display=\"none\"")
string(FIND "${drawing}" "${hidden}" at)
if(at EQUAL -1)
  message(FATAL_ERROR "${IN} has no hidden group keymapNumber${NUMBER}")
endif()
string(REPLACE "${hidden}" "<g id=\"keymapNumber${NUMBER}\"" drawing "${drawing}")
string(REPLACE "#e4572e" "${TINT}" drawing "${drawing}")
file(WRITE ${OUT} "${drawing}")
