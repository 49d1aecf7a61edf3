# What every target of the house shares.

add_library(kelvane_options INTERFACE)
target_compile_options(kelvane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wnull-dereference -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 reports these inside the standard library's own headers when it inlines vectors.
  target_compile_options(kelvane_options INTERFACE
    -Wno-null-dereference -Wno-stringop-overflow -Wno-array-bounds -Wno-stringop-overread -Wno-restrict
    -Wno-free-nonheap-object -Wno-maybe-uninitialized)
endif()
if(KELVANE_SANITIZE)
  target_compile_options(kelvane_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kelvane_options INTERFACE -fsanitize=address,undefined)
endif()
if(KELVANE_FUZZ)
  target_compile_options(kelvane_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kelvane_options INTERFACE -fsanitize=address,undefined)
endif()

# kelvane_library(NAME SOURCES file... [LINK target...]): one room of the house. Includes are written from src/ on, as in
# "container/RcoFile.h".
function(kelvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE kelvane_options)
  target_link_options(${name} PUBLIC $<TARGET_PROPERTY:kelvane_options,INTERFACE_LINK_OPTIONS>)
endfunction()

# kelvane_test(NAME SOURCES file... [LINK target...]): a GoogleTest program whose tests CTest lists one by one.
function(kelvane_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  # The code under test is what is optimised; its tests only have to compile soon.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0>)
  target_link_libraries(${name} PRIVATE ${ARG_LINK} kelvane_options GTest::gtest_main GTest::gmock)
  set(environment "")
  if(KELVANE_SANITIZE)
    # The leak checker fails when it looks at the thread-local memory of the toolkit's plug-ins.
    set(environment ENVIRONMENT "LSAN_OPTIONS=use_tls=0:suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300 ${environment})
endfunction()
