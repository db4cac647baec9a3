# The editor's artwork. tools/artgen draws it at build time (it is never stored
# in the repository) into <build>/artwork, once per build tree and again only
# when the generator changes. Whatever needs it links the object library
# zq_artwork: on Windows a compiled resource script (type "APIC", upper-case
# names), elsewhere a table that registers itself with sys::ResourceTable. The
# PNG previews land in <build>/artwork/png.
set(zq_artwork_dir ${CMAKE_BINARY_DIR}/artwork)
set(ZQ_FONT_DIR /usr/share/fonts/X11/misc CACHE PATH "Folder of the misc-fixed bitmap fonts")

zq_generated_resources(zq_artwork artgen ${zq_artwork_dir} artwork.rc ArtworkTable.cpp
                       "Drawing the editor's artwork" ${ZQ_FONT_DIR})

# The contact sheet, drawn through the toolkit (native builds only), and the
# check that it comes out the same on every run.
if(TARGET artsheet)
  set(zq_contact_sheet ${zq_artwork_dir}/png/contact-sheet.png)
  add_custom_command(
    OUTPUT ${zq_contact_sheet}
    COMMAND artsheet ${zq_contact_sheet}
    DEPENDS artsheet
    COMMENT "Composing the artwork's contact sheet"
    VERBATIM)
  add_custom_target(artwork_contact_sheet ALL DEPENDS ${zq_contact_sheet})
  if(ZQ_BUILD_TESTS)
    add_test(NAME artwork_contact_sheet_is_deterministic
             COMMAND sh -c "\"$1\" a.png && \"$1\" b.png && cmp a.png b.png" sh $<TARGET_FILE:artsheet>
             WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
    set_tests_properties(artwork_contact_sheet_is_deterministic PROPERTIES LABELS unit)
  endif()
endif()

# The test programs that look the artwork up.
foreach(t IN ITEMS test_artgen test_gadu test_zarquette_gui test_zarquette_gui_stress)
  if(TARGET ${t})
    target_link_libraries(${t} PRIVATE zq_artwork)
  endif()
endforeach()
