# Every tests/fuzz/<Name>Fuzz.cpp defines LLVMFuzzerTestOneInput. It becomes
#  - with ZQ_FUZZERS (the clang "fuzz" preset): a libFuzzer program fuzz_<Name>;
#  - in native test builds: corpus_<Name>, which replays tests/fuzz/corpus/<Name>/
#    as a regression test (under the sanitizers in the asan build).
file(GLOB zq_fuzz_sources CONFIGURE_DEPENDS ${ZQ_ROOT}/tests/fuzz/*Fuzz.cpp)
set(zq_fuzz_libs zq_lumo_vst2 zq_zarquette zq_gadu zq_basic zq_sys)

foreach(src IN LISTS zq_fuzz_sources)
  get_filename_component(stem ${src} NAME_WE)
  string(REGEX REPLACE "Fuzz$" "" name ${stem})
  if(ZQ_FUZZERS)
    add_executable(fuzz_${name} ${src})
    target_link_libraries(fuzz_${name} PRIVATE ${zq_fuzz_libs})
    target_compile_options(fuzz_${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    zq_set_warnings(fuzz_${name})
  elseif(ZQ_BUILD_TESTS AND NOT CMAKE_CROSSCOMPILING)
    add_executable(corpus_${name} ${src} ${ZQ_ROOT}/tests/fuzz/CorpusMain.cpp)
    target_link_libraries(corpus_${name} PRIVATE ${zq_fuzz_libs})
    zq_set_warnings(corpus_${name})
    add_test(NAME corpus_${name} COMMAND corpus_${name} ${ZQ_ROOT}/tests/fuzz/corpus/${name})
    set_tests_properties(corpus_${name} PROPERTIES LABELS "fuzz-corpus")
  endif()
endforeach()
