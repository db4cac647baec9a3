# LV2, natively on Linux: the host adapter lumo/lv2 and the bundle
# <build>/zarquette.lv2. The LV2 headers (Debian's lv2-dev) are the interface
# only: no LV2 library is linked.
if(WIN32)
  return()
endif()
find_path(ZQ_LV2_INCLUDE_DIR lv2/core/lv2.h REQUIRED)
zq_add_library(lumo_lv2 lumo/lv2 DEPENDS zq_lumo zq_lumo_midi)
target_include_directories(zq_lumo_lv2 SYSTEM PUBLIC ${ZQ_LV2_INCLUDE_DIR})
add_subdirectory(zarquette/lv2)
