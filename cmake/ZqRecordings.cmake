# The effect's recordings. tools/recgen synthesises them at build time (they are
# never stored in the repository) into <build>/recordings, once per build tree
# and again only when the generator changes. Whatever needs them links the
# object library zq_recordings: on Windows a compiled resource script (type
# "WAVE", French language, upper-case names), elsewhere a table that registers
# itself with sys::ResourceTable.
set(zq_recordings_dir ${CMAKE_BINARY_DIR}/recordings)

zq_host_tool(recgen)

add_custom_command(
  OUTPUT ${zq_recordings_dir}/recordings.rc ${zq_recordings_dir}/RecordingTable.cpp
  COMMAND ${zq_recgen} ${zq_recordings_dir}
  DEPENDS ${zq_recgen_depends}
  COMMENT "Synthesising the recordings"
  VERBATIM)

if(WIN32)
  enable_language(RC)
  add_library(zq_recordings OBJECT ${zq_recordings_dir}/recordings.rc)
else()
  add_library(zq_recordings OBJECT ${zq_recordings_dir}/RecordingTable.cpp)
  target_link_libraries(zq_recordings PUBLIC zq_sys)
  zq_set_warnings(zq_recordings)
endif()

# The test programs that look the recordings up.
foreach(t IN ITEMS test_sys test_zarquette)
  if(TARGET ${t})
    target_link_libraries(${t} PRIVATE zq_recordings)
  endif()
endforeach()
