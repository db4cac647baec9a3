# The 32-bit product's own runs, under 32-bit wine (scripts/install-i386.sh
# sets it up, on the kernel's 32-bit support or through QEMU's user-mode
# emulator). Emulated, a run costs several times its 64-bit twin, so this
# build makes a chosen few of the plug-in's end-to-end runs (all of them run
# on the 64-bit DLL and natively) and adds twin runs: the same run through the
# 64-bit DLL of the same sources must write the same files, which finds the
# faults that live only in the 32-bit build. Every test here is labelled i386.
# Included by zarquette/dll/CMakeLists.txt, whose variables it uses.

list(APPEND zq_e2e_labels i386)
set(zq_e2e_selection info validate render_lunch_is_silent editor_drag_bof editor_switch_toggles editor_stress)
# 15 rounds of two editors at once: 30 opens.
set(zq_editor_cycles 14)

# The clock shim that pins faketime's date for 32-bit wine, and its empty
# 64-bit twin (see faketime32.c); cmake/wine32-run.sh finds them here.
find_program(ZQ_HOST_CC NAMES gcc cc REQUIRED)
set(zq_shim_dir ${CMAKE_BINARY_DIR}/faketime32)
set(zq_shims)
foreach(pair IN ITEMS i386-linux-gnu:-m32 x86_64-linux-gnu:-m64)
  string(REPLACE ":" ";" pair ${pair})
  list(GET pair 0 multiarch)
  list(GET pair 1 flag)
  set(shim ${zq_shim_dir}/lib/${multiarch}/libzqfaketime32.so)
  add_custom_command(OUTPUT ${shim}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${zq_shim_dir}/lib/${multiarch}
    COMMAND ${ZQ_HOST_CC} ${flag} -std=c11 -O2 -fPIC -shared -nostdlib -ffreestanding -fno-stack-protector -Wl,-z,defs
            -Wall -Wextra -Wpedantic -Werror -o ${shim} ${ZQ_ROOT}/tests/dll/faketime32.c
    DEPENDS ${ZQ_ROOT}/tests/dll/faketime32.c VERBATIM)
  list(APPEND zq_shims ${shim})
endforeach()
add_custom_target(zq_faketime32 ALL DEPENDS ${zq_shims})
list(APPEND zq_env ZQ_FAKETIME32=${zq_shim_dir})

set(ZQ_WIN64_BUILD ${ZQ_ROOT}/build/win64 CACHE PATH "The win64 build whose DLL the 32-bit product is compared with")

# zq_twin_e2e(NAME PASS_REGEX [DISPLAY] [TWIN_OPTIONS options...] ARGS vsthost args...): a twin
# run (tests/dll/twin-run.sh) at 10:00 on a cat day, or with DISPLAY on a
# display; the plug-in is @PLUGIN@.
function(zq_twin_e2e name regex)
  cmake_parse_arguments(ARG "DISPLAY" "" "TWIN_OPTIONS;ARGS" ${ARGN})
  set(twin ${ZQ_ROOT}/tests/dll/twin-run.sh ${ARG_TWIN_OPTIONS} ${CMAKE_BINARY_DIR}/twin-${name}
      ${CMAKE_BINARY_DIR} ${ZQ_WIN64_BUILD} ${ARG_ARGS})
  set(labels ${zq_e2e_labels})
  if(ARG_DISPLAY)
    # The editor does not look at the clock.
    set(twin ${ZQ_ROOT}/tools/vsthost/tests/with-display.sh ${twin})
    list(APPEND labels gui)
  else()
    set(twin ${zq_morning} ${twin})
  endif()
  add_test(NAME zarquette_twin_${name} COMMAND ${twin})
  set_tests_properties(zarquette_twin_${name} PROPERTIES PASS_REGULAR_EXPRESSION "${regex}"
    LABELS "${labels}" ENVIRONMENT "${zq_env}")
  if(ARG_DISPLAY)
    set_tests_properties(zarquette_twin_${name} PROPERTIES RESOURCE_LOCK vsthost_display)
  endif()
endfunction()

set(zq_agree "the 32-bit and the 64-bit run agree on [0-9]+ files")
# The demo's settings with "Nuclear Power" off: no resonance grows the last
# bit of a rounding into a different sound, so the renders match exactly.
zq_twin_e2e(demo "rendered 352800 frames.*\n${zq_agree}"
  ARGS render @PLUGIN@ -o demo.wav --length 8 --set Gauloises=70 --set Oignons=55 --set Bof=40
       --set "Vin Rouge=35")
# The chaotic settings ("Nuclear Power" on) are compared as sound (level,
# third-octave spectrum and stutter grid) by the native host tool, which the
# test script builds before this one; ZQ_SOUND_COMPARE names another program
# taking A.wav B.wav (exit 0 when alike), or nothing to leave the run out.
set(ZQ_SOUND_COMPARE "${ZQ_ROOT}/build/native/tools/vsthost/vsthost compare" CACHE STRING
    "Program comparing two WAV files as sound (A.wav B.wav)")
if(ZQ_SOUND_COMPARE)
  zq_twin_e2e(demo_nuclear "rendered 352800 frames.*\n${zq_agree}"
    TWIN_OPTIONS --wav-compare ${ZQ_SOUND_COMPARE}
    ARGS render @PLUGIN@ -o demo.wav --length 8 --set Gauloises=70 --set Oignons=55 --set Bof=40
         --set "Vin Rouge=35" --set "Nuclear Power=OUI")
endif()
# A MIDI file sweeps parameters by NRPN at exact offsets: the automation each
# block leaves and the sound must match the 64-bit run's.
zq_twin_e2e(midi "played 64 MIDI events into the plug-in.*\n${zq_agree}"
  ARGS render @PLUGIN@ -o midi.wav --length 2 --block 256
       --midi-in ${ZQ_ROOT}/tests/fuzz/corpus/MidiFile/nrpn_sweep.mid --automation-out automation.csv)
# The settings autoload from the registry, with a parameter order of the
# user's: the host sees the parameters in that order.
zq_twin_e2e(reorder_autoload "\"Vin Rouge\".*\"Gauloises\".*\"Tempo\".*\"Nuclear Power\".*\"Oignons\".*\"Bof\".*\n${zq_agree}"
  TWIN_OPTIONS --autoload "Zarquette_config_section = { parameter_reorder_map = { 5_Vin_Rouge 2_Gauloises 0_Tempo } }"
  ARGS info @PLUGIN@)
# The editor's artwork on screen, pixel for pixel.
zq_twin_e2e(editor_artwork "captured 512x384 to editor.png\n.*${zq_agree}" DISPLAY TWIN_OPTIONS --files-only
  ARGS screenshot @PLUGIN@ -o editor.png --set Gauloises=70 --set Oignons=55 --set Bof=40 --set "Vin Rouge=35"
       --set "Nuclear Power=OUI" --after-ms 500)
