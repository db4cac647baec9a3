# LV2, natively on Linux: the host adapter lumo/lv2 and the bundle
# <build>/zarquette.lv2. The LV2 headers (Debian's lv2-dev) are the interface
# only: no LV2 library is linked.
if(WIN32)
  return()
endif()
find_path(ZQ_LV2_INCLUDE_DIR lv2/core/lv2.h REQUIRED)
zq_add_library(lumo_lv2 lumo/lv2 DEPENDS zq_lumo zq_lumo_midi)
target_include_directories(zq_lumo_lv2 SYSTEM PUBLIC ${ZQ_LV2_INCLUDE_DIR})
# The editor as an LV2 UI, in the toolkit's X11 window: a library of its own,
# so that the plug-in's library links no X11.
zq_add_library(lumo_lv2_ui lumo/lv2/ui DEPENDS zq_lumo_lv2 zq_gadu_x11)
add_subdirectory(zarquette/lv2)
