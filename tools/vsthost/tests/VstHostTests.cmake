# Unit tests of the tool's own logic, and end-to-end runs of vsthost on the
# test plug-in: natively, and in the Windows build under wine64. Every test
# runs in the folder that holds the program and the plug-ins, so that file
# names work the same under wine.
file(GLOB vsthost_unit_tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tests/*Test.cpp)
set(ZQ_TEST_LINK zq_vsthost)
zq_add_test_program(test_vsthost unit ${vsthost_unit_tests})
add_dependencies(test_vsthost vsthost_testgain vsthost_testgain_params vsthost_testgain_broken)
target_compile_definitions(test_vsthost PRIVATE
  VSTHOST_TESTGAIN="$<TARGET_FILE_NAME:vsthost_testgain>"
  VSTHOST_TESTGAIN_PARAMS="$<TARGET_FILE_NAME:vsthost_testgain_params>")

set(vsthost_env "")
if(CMAKE_CROSSCOMPILING)
  # The wine prefix of the whole build tree, not one per test folder.
  set(vsthost_env ZQ_WINEPREFIX=${CMAKE_BINARY_DIR}/.wineprefix)
  set_tests_properties(test_vsthost PROPERTIES ENVIRONMENT "${vsthost_env}")
endif()

set(gain $<TARGET_FILE_NAME:vsthost_testgain>)
set(params $<TARGET_FILE_NAME:vsthost_testgain_params>)
set(broken $<TARGET_FILE_NAME:vsthost_testgain_broken>)
set(midi_corpus ${ZQ_ROOT}/tests/fuzz/corpus/MidiFile)

# vsthost_e2e(NAME PASS_REGEX [FIXTURE_SETUP name] [FIXTURE_REQUIRED names] ARGS args...)
function(vsthost_e2e name regex)
  cmake_parse_arguments(ARG "" "FIXTURE_SETUP" "FIXTURE_REQUIRED;ARGS" ${ARGN})
  add_test(NAME vsthost_${name} COMMAND vsthost ${ARG_ARGS} WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  set_tests_properties(vsthost_${name} PROPERTIES PASS_REGULAR_EXPRESSION "${regex}" LABELS e2e
    ENVIRONMENT "${vsthost_env}")
  if(ARG_FIXTURE_SETUP)
    set_tests_properties(vsthost_${name} PROPERTIES FIXTURES_SETUP ${ARG_FIXTURE_SETUP})
  endif()
  if(ARG_FIXTURE_REQUIRED)
    set_tests_properties(vsthost_${name} PROPERTIES FIXTURES_REQUIRED "${ARG_FIXTURE_REQUIRED}")
  endif()
endfunction()

vsthost_e2e(info "unique ID: +'VtGn' \\(0x5674476E\\)[^\n]*\n.*\"Phase\" = 0 \"Normal\"" ARGS info ${gain})
vsthost_e2e(render_demo "rendered 176400 frames .*32-bit float" FIXTURE_SETUP vsthost_demo_wav
  ARGS render ${gain} -o e2e-demo.wav --length 4 --set Gain=-12 --tempo 128)
vsthost_e2e(preset_save_program "saved program chunk \\(FPCh\\)" FIXTURE_SETUP vsthost_fxp
  ARGS preset save ${gain} e2e-inverted.fxp --program 2)
vsthost_e2e(preset_load_program "program 0 \"Inverted\".*\"Phase\" = 1 \"Inverted\"" FIXTURE_REQUIRED vsthost_fxp
  ARGS preset load ${gain} e2e-inverted.fxp)
vsthost_e2e(render_file "rendered 176400 frames .* blocks of 100 .*16-bit PCM" FIXTURE_REQUIRED "vsthost_demo_wav;vsthost_fxp"
  ARGS render ${gain} e2e-demo.wav -o e2e-file.wav --preset e2e-inverted.fxp --pcm16 --block 100)
vsthost_e2e(preset_save_bank_params "saved bank of parameter programs \\(FxBk\\)" FIXTURE_SETUP vsthost_fxb
  ARGS preset save ${params} e2e-params.fxb)
vsthost_e2e(preset_load_bank_params "loaded bank of parameter programs.*\"Gain\" = 0.833333" FIXTURE_REQUIRED vsthost_fxb
  ARGS preset load ${params} e2e-params.fxb)
vsthost_e2e(preset_wrong_kind "stores a chunk but the plug-in uses parameters" FIXTURE_REQUIRED vsthost_fxp
  ARGS preset load ${params} e2e-inverted.fxp)
vsthost_e2e(info_midi "receiveVstEvents: yes \\(1\\)\n  receiveVstMidiEvent: yes" ARGS info ${gain})
vsthost_e2e(render_midi "played 64 MIDI events into the plug-in\nwrote 64 MIDI events from the plug-in to e2e-echo.mid"
  ARGS render ${gain} -o e2e-midi.wav --length 2 --midi-in ${midi_corpus}/nrpn_sweep.mid --midi-out e2e-echo.mid
  --automation-out e2e-midi.csv)
vsthost_e2e(render_midi_malformed "vsthost: [^\n]*truncated.mid: the MIDI file ends before its contents do"
  ARGS render ${gain} -o e2e-midi.wav --midi-in ${midi_corpus}/truncated.mid)

# The validation suite on the test plug-in; the Windows build gets a real
# parent window for the editor under a virtual X server when one is there.
find_program(vsthost_xvfb_run xvfb-run)
if(CMAKE_CROSSCOMPILING AND vsthost_xvfb_run)
  add_test(NAME vsthost_validate
    COMMAND ${vsthost_xvfb_run} -a ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE_NAME:vsthost> validate ${gain}
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  set_tests_properties(vsthost_validate PROPERTIES ENVIRONMENT "${vsthost_env}" LABELS e2e
    PASS_REGULAR_EXPRESSION "PASS  editor open and close while suspended.*\n[1-9][0-9]* passed, 0 failed")
else()
  vsthost_e2e(validate "\n[1-9][0-9]* passed, 0 failed" ARGS validate ${gain})
endif()
# The MIDI checks must catch a plug-in with faulty MIDI.
set(broken_midi_faults "FAIL  MIDI junk: data bytes of 0x80 and above: NaN[^\n]*\n")
string(APPEND broken_midi_faults ".*FAIL  MIDI sent to the host is well formed: [^\n]*deltaFrames 512 outside its block")
vsthost_e2e(validate_broken_midi "${broken_midi_faults}"
  ARGS validate ${broken} --level 1)
vsthost_e2e(validate_params_strict "\n[1-9][0-9]* passed, 0 failed" ARGS validate ${params} --level 3 --seed 7
  --rates 44100,96000 --blocks 16,512)
