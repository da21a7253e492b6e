# One target per folder, and a folder sees only the headers of the folders it links: each target's include path is a
# folder of its own with a single link to its sources, so an include against the arrows does not build.

add_library(quillform_warnings INTERFACE)
target_compile_options(quillform_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wno-sign-conversion)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 takes std::string's own operator+ and replace for overlapping or endless copies when it inlines them.
  target_compile_options(quillform_warnings INTERFACE -Wno-restrict -Wno-stringop-overflow)
endif()
if(QUILLFORM_WERROR)
  target_compile_options(quillform_warnings INTERFACE -Werror)
endif()
add_library(quillform_sanitizers INTERFACE)
if(QUILLFORM_SANITIZE)
  target_compile_options(quillform_sanitizers INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(quillform_sanitizers INTERFACE -fsanitize=address,undefined)
endif()
if(QUILLFORM_FUZZ)
  target_compile_options(quillform_sanitizers INTERFACE -fsanitize=fuzzer-no-link,address,undefined
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quillform_sanitizers INTERFACE -fsanitize=address,undefined)
endif()

# quillform_expose(<target> <folder>): lets those who link <target> write #include "<folder>/..."; <folder> is relative
# to src, such as data/jet.
function(quillform_expose target folder)
  set(root ${CMAKE_BINARY_DIR}/include/${target})
  get_filename_component(parent ${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${root}/${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
  target_include_directories(${target} PUBLIC ${root})
endfunction()

# quillform_library(<folder> SOURCES ... [PUBLIC ...] [PRIVATE ...]): the target quillform_<folder with _>, also under the
# name quillform::<folder with _>.
function(quillform_library folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  add_library(quillform_${name} STATIC ${ARG_SOURCES})
  add_library(quillform::${name} ALIAS quillform_${name})
  quillform_expose(quillform_${name} ${folder})
  target_link_libraries(quillform_${name} PUBLIC ${ARG_PUBLIC} quillform_sanitizers
    PRIVATE ${ARG_PRIVATE} quillform_warnings)
endfunction()

# quillform_forms(<folder> SOURCES ... [PUBLIC ...] [PRIVATE ...]): the forms of a folder, a target of its own beside the
# folder's library (quillform_catalog_forms), or the folder's only target where the whole folder is forms
# (quillform_desktop). Qt's headers and its code generators work here alone. Nothing happens on a machine without Qt.
function(quillform_forms folder)
  if(NOT TARGET Qt6::Widgets)
    return()
  endif()
  set(name quillform_${folder})
  set(alias quillform::${folder})
  if(TARGET ${name})
    string(APPEND name _forms)
    string(APPEND alias _forms)
  endif()
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  add_library(${alias} ALIAS ${name})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS)
  quillform_expose(${name} ${folder})
  target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} Qt6::Widgets quillform_sanitizers
    PRIVATE ${ARG_PRIVATE} quillform_warnings)
endfunction()

# quillform_test(<name> SOURCES ... LINK ... [ENVIRONMENT ...]): one test program; its cases become ctest cases, run with
# the given environment (NAME=VALUE).
function(quillform_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} GTest::gtest GTest::gtest_main quillform_sanitizers
    quillform_warnings)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE QUILLFORM_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    PROPERTIES TIMEOUT 300 ENVIRONMENT "${ARG_ENVIRONMENT}")
endfunction()
