# The effect's recordings. tools/recgen synthesises them at build time (they are
# never stored in the repository) into <build>/recordings, once per build tree
# and again only when the generator changes. Whatever needs them links the
# object library zq_recordings: on Windows a compiled resource script (type
# "WAVE", French language, upper-case names), elsewhere a table that registers
# itself with sys::ResourceTable.
set(zq_recordings_dir ${CMAKE_BINARY_DIR}/recordings)

zq_generated_resources(zq_recordings recgen ${zq_recordings_dir} recordings.rc RecordingTable.cpp
                       "Synthesising the recordings")

# The test programs that look the recordings up.
foreach(t IN ITEMS test_sys test_zarquette test_zarquette_gui test_zarquette_gui_stress)
  if(TARGET ${t})
    target_link_libraries(${t} PRIVATE zq_recordings)
  endif()
endforeach()
