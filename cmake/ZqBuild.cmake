# Shared build rules: warnings, platform flags and the per-folder libraries.

set(ZQ_ROOT ${CMAKE_CURRENT_SOURCE_DIR})

function(zq_set_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Werror)
endfunction()

# Platform options that every target of the build needs (our own and GoogleTest).
if(WIN32)
  add_compile_definitions(WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
  add_link_options(-static -static-libgcc -static-libstdc++)
  # The same commit links the same bytes: no link time in the images' headers
  # (release archives are compared byte for byte).
  add_link_options(-Wl,--no-insert-timestamp)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # 32-bit hosts may enter with a 4-byte aligned stack.
    add_compile_options(-msse2 -mfpmath=sse -mstackrealign)
  endif()
endif()

if(ZQ_SANITIZE)
  list(JOIN ZQ_SANITIZE "," zq_sanitizers)
  add_compile_options(-fsanitize=${zq_sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${zq_sanitizers})
endif()

# Fuzzing builds instrument every library for coverage and check it with the
# sanitizers, not only the fuzzers' own files.
if(ZQ_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# Sources of one folder, without the files of the other platform: files named
# *Win32.* build only for Windows, *Posix.* only elsewhere; the same goes for
# tests named *Win32Test.*, *PosixStressTest.* and so on.
function(zq_platform_sources out dir)
  file(GLOB found CONFIGURE_DEPENDS ${ZQ_ROOT}/${dir}/*.cpp)
  set(kept)
  foreach(f IN LISTS found)
    get_filename_component(name ${f} NAME_WE)
    if(WIN32 AND name MATCHES "Posix((Stress)?Test)?$")
      continue()
    endif()
    if(NOT WIN32 AND name MATCHES "Win32((Stress)?Test)?$")
      continue()
    endif()
    list(APPEND kept ${f})
  endforeach()
  set(${out} ${kept} PARENT_SCOPE)
endfunction()

# zq_add_library(name dir [DEPENDS libs...]): library zq_<name> from <dir>/*.cpp
# and, when tests are on, test_<name> from tests/<dir>/*.cpp.
function(zq_add_library name dir)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  zq_platform_sources(srcs ${dir})
  if(srcs)
    add_library(zq_${name} STATIC ${srcs})
    target_include_directories(zq_${name} PUBLIC ${ZQ_ROOT} ${CMAKE_BINARY_DIR}/generated)
    target_link_libraries(zq_${name} PUBLIC ${ARG_DEPENDS})
  else()
    add_library(zq_${name} INTERFACE)
    target_include_directories(zq_${name} INTERFACE ${ZQ_ROOT} ${CMAKE_BINARY_DIR}/generated)
    target_link_libraries(zq_${name} INTERFACE ${ARG_DEPENDS})
  endif()
  if(srcs)
    zq_set_warnings(zq_${name})
  endif()
  if(WIN32 AND srcs)
    target_link_libraries(zq_${name} PUBLIC winmm)
  endif()
  if(ZQ_BUILD_TESTS)
    zq_add_tests(${name} ${dir} zq_${name})
  endif()
endfunction()

# zq_generated_resources(lib tool dir rc table comment [tool arguments...]):
# the object library lib of the resources that tools/<tool> writes into dir
# during the build: on Windows its resource script rc, elsewhere its C++
# table, which registers itself with sys::ResourceTable. The tool runs as
# "tool dir arguments..." on the build machine (a cross build builds it again
# with the build machine's compiler, as a project of its own), once per build
# tree and again only when it changes.
if(WIN32)
  enable_language(RC)
endif()

function(zq_generated_resources lib tool dir rc table comment)
  if(CMAKE_CROSSCOMPILING)
    include(ExternalProject)
    find_program(ZQ_HOST_CXX NAMES c++ g++ clang++ REQUIRED)
    set(program ${CMAKE_BINARY_DIR}/${tool}-host/${tool})
    ExternalProject_Add(${tool}_host
      SOURCE_DIR ${ZQ_ROOT}/tools/${tool}
      BINARY_DIR ${CMAKE_BINARY_DIR}/${tool}-host
      CMAKE_ARGS -DCMAKE_CXX_COMPILER=${ZQ_HOST_CXX} -DCMAKE_BUILD_TYPE=Release
      INSTALL_COMMAND ""
      BUILD_ALWAYS ON
      BUILD_BYPRODUCTS ${program})
    set(depends ${tool}_host ${program})
  else()
    set(program $<TARGET_FILE:${tool}>)
    set(depends ${tool})
  endif()
  add_custom_command(
    OUTPUT ${dir}/${rc} ${dir}/${table}
    COMMAND ${program} ${dir} ${ARGN}
    DEPENDS ${depends}
    COMMENT "${comment}"
    VERBATIM)
  if(WIN32)
    add_library(${lib} OBJECT ${dir}/${rc})
  else()
    add_library(${lib} OBJECT ${dir}/${table})
    target_link_libraries(${lib} PUBLIC zq_sys)
    zq_set_warnings(${lib})
  endif()
endfunction()
