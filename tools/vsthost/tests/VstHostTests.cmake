# Unit tests of the tool's own logic, and end-to-end runs of vsthost on the
# test plug-in: natively, and in the Windows build under wine64. Every test
# runs in the folder that holds the program and the plug-ins, so that file
# names work the same under wine.
file(GLOB vsthost_unit_tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tests/*Test.cpp)
if(WIN32)
  list(FILTER vsthost_unit_tests EXCLUDE REGEX "PosixTest\\.cpp$")
else()
  list(FILTER vsthost_unit_tests EXCLUDE REGEX "Win32Test\\.cpp$")
endif()
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
  FIXTURE_SETUP vsthost_file_wav
  ARGS render ${gain} e2e-demo.wav -o e2e-file.wav --preset e2e-inverted.fxp --pcm16 --block 100)
# The file render above inverted the demo's phase and stored it in 16 bits: the
# same sound, though no sample is equal.
vsthost_e2e(compare_sound "same sound" FIXTURE_REQUIRED "vsthost_demo_wav;vsthost_file_wav"
  ARGS compare e2e-demo.wav e2e-file.wav --tempo 128)
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
  # vsthost_gui_e2e(NAME PASS_REGEX args...): a run that opens windows, on the
  # caller's display or a virtual one. Virtual servers started at once may
  # pick the same display number, so these tests take turns. A mouse script
  # separates its steps with $<SEMICOLON>, as a plain one would split the
  # argument.
  function(vsthost_gui_e2e name regex)
    add_test(NAME vsthost_${name}
      COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/tests/with-display.sh ${CMAKE_CROSSCOMPILING_EMULATOR}
        $<TARGET_FILE_NAME:vsthost> ${ARGN}
      WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
    set_tests_properties(vsthost_${name} PROPERTIES ENVIRONMENT "${vsthost_env}" LABELS "e2e;gui"
      PASS_REGULAR_EXPRESSION "${regex}" RESOURCE_LOCK vsthost_display)
  endfunction()
  vsthost_gui_e2e(validate "PASS  editor open and close while suspended.*\n[1-9][0-9]* passed, 0 failed"
    validate ${gain})
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

# Isolation: the test plug-in crashes on demand in one check group
# (TESTGAIN_CRASH=KIND@PLACE); the run names that group and how its process
# ended, the later groups still run and pass, and it ends with its summary
# and exit code 1. Under AddressSanitizer its reports end in an abort, and
# faults reach the kernel.
# vsthost_crash_e2e(NAME KIND@PLACE REGEX args...)
function(vsthost_crash_e2e name crash regex)
  add_test(NAME vsthost_${name}
    COMMAND sh ${CMAKE_CURRENT_SOURCE_DIR}/tests/exit-code.sh ${CMAKE_CROSSCOMPILING_EMULATOR}
      $<TARGET_FILE:vsthost> validate ${gain} --level 1 --rates 44100,192000 --blocks 512 ${ARGN}
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  set_tests_properties(vsthost_${name} PROPERTIES LABELS e2e PASS_REGULAR_EXPRESSION "${regex}\r?\nexit code 1\n"
    ENVIRONMENT "${vsthost_env};TESTGAIN_CRASH=${crash};ASAN_OPTIONS=abort_on_error=1:handle_segv=0")
endfunction()
set(one_failed ".*\n[0-9]+ passed, 1 failed")
vsthost_crash_e2e(validate_null_write null@text
  "FAIL  parameters group: crashed: (signal 11 \\(SIGSEGV|exception 0xC0000005 \\(access violation)[^\n]* in step \"parameters\".*PASS  audio at 192000 Hz${one_failed}")
vsthost_crash_e2e(validate_abort abort@midi
  "FAIL  midi group: crashed: (signal 6 \\(SIGABRT|exit code 3 \\(abort)[^\n]* in step \"MIDI input\"${one_failed}")
vsthost_crash_e2e(validate_stack_overflow stack@name
  "FAIL  state group: crashed: (signal 11 \\(SIGSEGV|exception 0xC00000FD \\(stack overflow).*PASS  parameter 1 ${one_failed}")
vsthost_crash_e2e(validate_heap_corruption heap@chunk
  "FAIL  state group: crashed: (signal 6 \\(SIGABRT|exception 0xC0000374 \\(heap corruption).*PASS  parameter 1 ${one_failed}")
# Two files: a hang makes each plug-in's line CRASH.
vsthost_crash_e2e(validate_hang loop@rate
  "CRASH [^\n]*vsthost-testgain[.][a-z]+: [1-9][0-9] passed, 1 failed\r?\n      audio group: timed out after 2 s in step \"audio at every rate and block size\", after the check \"audio at 44100 Hz\"\r?\nCRASH [^\n]*vsthost-testgain-params[^\n]*\n[^\n]*\n2 files: 0 passed, 0 failed, 2 crashed, 0 not plug-ins"
  ${params} --timeout 2)
# A folder: one line per plug-in with what failed, a total, and the same in
# the JSON report, which CMake's own parser must read. A file that does not
# load fails once, with no group run after that.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/e2e-junk${CMAKE_SHARED_MODULE_SUFFIX} "not a library")
vsthost_e2e(validate_folder
  "FAIL  [^\n]*e2e-junk[^\n]*: 0 passed, 1 failed\r?\n      load: [^\n]*\nFAIL  [^\n]*vsthost-testgain-broken[^\n]*: [0-9]+ passed, 2 failed\r?\n      MIDI junk: data bytes[^\n]*\n      MIDI sent[^\n]*\n(PASS  [^\n]*\n)+[45] files: [23] passed, 2 failed, 0 crashed, 0 not plug-ins"
  FIXTURE_SETUP vsthost_validation_json
  ARGS validate . --level 1 --rates 44100 --blocks 512 --json e2e-validation.json)
add_test(NAME vsthost_validate_json COMMAND ${CMAKE_COMMAND} -DFILE=e2e-validation.json
  -P ${CMAKE_CURRENT_SOURCE_DIR}/tests/check-json.cmake WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
set_tests_properties(vsthost_validate_json PROPERTIES LABELS e2e FIXTURES_REQUIRED vsthost_validation_json
  PASS_REGULAR_EXPRESSION "vsthost-testgain-broken[^:]*: fail, [1-9][0-9]* checks\n.*vsthost-testgain[.][a-z]+: pass")

# The bench command measures any plug-in; the test gain is enough to see it run.
vsthost_e2e(bench "real-time factor \\(CPU time\\): min [0-9.]+x, median [0-9.]+x.*99th percentile: [0-9.]+ us"
  ARGS bench ${gain} --seconds 1 --repeats 3 --block 64)

# The editor commands. Editors open only in the Windows build.
if(CMAKE_CROSSCOMPILING AND vsthost_xvfb_run)
  set(leaky $<TARGET_FILE_NAME:vsthost_testgain_leaky>)
  add_dependencies(test_vsthost vsthost_testgain_leaky)
  # Setting parameters while the editor is open redraws exactly the gain bar's
  # end (from 0 dB to +6 dB) and the phase lamp: 19 x 40 + 50 x 30 pixels.
  vsthost_gui_e2e(screenshot_set
    "editor 240x120\ncaptured 240x120 to e2e-set-before.png\ncaptured 240x120 to e2e-set.png\n.*audio blocks processed during the session: [1-9][0-9]*\n.*: changed pixels: 2260\nchanged box: x 193 y 20 w 19 h 40\nchanged box: x 10 y 75 w 50 h 30\n"
    screenshot ${gain} -o e2e-set.png --before e2e-set-before.png --set Gain=6 --set Phase=Inverted
    --diff e2e-set-before.png)
  # Values set before the editor opens show in its first picture: the bar
  # ends half way; the host's own changes come back as no gesture.
  vsthost_gui_e2e(screenshot_settings_first
    "param 0 \"Gain\" = 0.500000 \"-24.00\"\n.*edits seen by the host: 0\n.*against e2e-set-before.png: changed pixels: 2920\nchanged box: x 120 y 20 w 73 h 40\n"
    screenshot ${gain} -o e2e-first.png --norm Gain=0.5 --settings-first --after-ms 100 --print-params
    --diff e2e-set-before.png)
  set_tests_properties(vsthost_screenshot_settings_first PROPERTIES DEPENDS vsthost_screenshot_set)
  # A drag in the bar is one gesture: begin, automation on every move, end.
  vsthost_gui_e2e(screenshot_drag
    "param 0 \"Gain\" = 0.750000 \"-6.00\"\n.*edits seen by the host: 8\n  begin edit 0\n  automate 0: 6 times, last 0.75\n  end edit 0\n"
    screenshot ${gain} -o e2e-drag.png --mouse "down 50 40$<SEMICOLON> move 175 40 5$<SEMICOLON> up 175 40" --print-params)
  # A double click restores the default; the click before it already moved the gain.
  vsthost_gui_e2e(screenshot_double_click
    "param 0 \"Gain\" = 0.833333 \"-?0.00\".*  automate 0: 1 time, last 0.409091\n  end edit 0\n  begin edit 0\n  automate 0: 1 time, last 0.833333\n  end edit 0\n"
    screenshot ${gain} -o e2e-dblclick.png --set Gain=-30 --mouse "dblclick 100 40" --print-params)
  # A click on the lamp flips the phase; a right click makes the editor ask
  # for a taller window, which the capture shows.
  vsthost_gui_e2e(screenshot_lamp_and_resize
    "editor 240x120\ncaptured 240x180 to e2e-resize.png.*param 1 \"Phase\" = 1.000000 \"Inverted\".*\nwindow requests: size 1, idle 0, display update 0\n"
    screenshot ${gain} -o e2e-resize.png --mouse "click 30 90$<SEMICOLON> rdown 200 100$<SEMICOLON> rup 200 100" --print-params)
  # A click where there is no control changes neither pixels nor parameters.
  vsthost_gui_e2e(screenshot_click_outside
    "edits seen by the host: 0\nwindow requests: size 0, idle 0, display update 0\nagainst e2e-outside-before.png: no pixels changed\n"
    screenshot ${gain} -o e2e-outside.png --before e2e-outside-before.png --mouse "click 150 100" --print-params
    --diff e2e-outside-before.png)
  vsthost_gui_e2e(editor_timed
    "editor 240x120 open; close its window to stop\neditor thread CPU: [0-9.]+ s in [0-9.]+ s \\([0-9.]+ % of one core\\)\nprocess CPU: .*\neditor closed after the time given; [1-9][0-9]* audio blocks processed"
    editor ${gain} --seconds 1 --set Gain=-6)
  vsthost_gui_e2e(editor_stress
    "at once 201 times\n.*unregistered after the last instance was deleted\nresult: nothing leaked"
    editor-stress ${gain} --cycles 200 --instances 2 --idle-ms 10)
  # The checks themselves find leaks: the leaky editor fails them all.
  vsthost_gui_e2e(editor_stress_finds_leaks
    "GDI objects: [0-9]+ before, [0-9]+ after\n.*still registered after the last instance was deleted\nresult: LEAK"
    editor-stress ${leaky} --cycles 5)
  vsthost_gui_e2e(validate_editor_leaks
    "PASS  editor leaks over repeated opening, two instances at once: 21 rounds of 2 editors.*\n[1-9][0-9]* passed, 0 failed"
    validate ${gain} --level 3 --rates 44100 --blocks 512)
  vsthost_gui_e2e(validate_finds_editor_leaks
    "FAIL  editor leaks over repeated opening, two instances at once: .*GDI [0-9]+ -> [0-9]+.*\n.*\n[1-9][0-9]* passed, 1 failed"
    validate ${leaky} --level 3 --rates 44100 --blocks 512)
else()
  vsthost_e2e(screenshot_without_windows "the plug-in has no editor" ARGS screenshot ${gain} -o e2e-none.png)
endif()
