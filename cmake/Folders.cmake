# How a folder of this house becomes a library, a program or a test.

add_library(tallyfen_options INTERFACE)
target_include_directories(tallyfen_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(tallyfen_options INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Werror)
target_compile_definitions(tallyfen_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
target_link_libraries(tallyfen_options INTERFACE Qt6::Core Threads::Threads)
if(TALLYFEN_SANITIZE)
  # For every compiler: some tests measure what the sanitizers change.
  target_compile_definitions(tallyfen_options INTERFACE TALLYFEN_SANITIZED)
  target_compile_options(tallyfen_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer
    # The instrumented code makes this compiler see uninitialized reads where there are none.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(tallyfen_options INTERFACE -fsanitize=address,undefined)
endif()
if(TALLYFEN_FUZZ)
  target_compile_options(tallyfen_options INTERFACE -fsanitize=fuzzer-no-link,address -fno-omit-frame-pointer)
  target_link_options(tallyfen_options INTERFACE -fsanitize=address)
endif()

# The folders that stand, in the order given.
function(tallyfen_add_folders)
  foreach(folder ${ARGN})
    if(EXISTS ${CMAKE_SOURCE_DIR}/${folder}/CMakeLists.txt)
      add_subdirectory(${folder})
    endif()
  endforeach()
endfunction()

# tallyfen_library(NAME [LINK targets...]): every source of this folder (RECURSE: and of the folders below
# it) as one static library named tallyfen_NAME.
function(tallyfen_library name)
  cmake_parse_arguments(arg "RECURSE" "" "LINK" ${ARGN})
  if(arg_RECURSE)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp *.h)
  else()
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  endif()
  add_library(tallyfen_${name} STATIC ${sources})
  target_link_libraries(tallyfen_${name} PUBLIC tallyfen_options ${arg_LINK})
  target_precompile_headers(tallyfen_${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/Precompiled.h)
  set_target_properties(tallyfen_${name} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# tallyfen_tests(NAME [LINK targets...]): the sources of this test folder as one CTest program NAME_tests.
function(tallyfen_tests name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE tallyfen_options ${arg_LINK} GTest::gtest GTest::gtest_main)
  target_precompile_headers(${name}_tests PRIVATE ${CMAKE_SOURCE_DIR}/cmake/PrecompiledTests.h)
  gtest_discover_tests(${name}_tests DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300)
endfunction()
