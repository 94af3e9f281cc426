include(GenerateExportHeader)

# tessaly_platform_library(NAME SOURCES...): a shared library of the device's platform, one folder each. Its public
# headers are in include/NAME/, included as <NAME/...>; everything beside them is private to the folder.
function(tessaly_platform_library name)
  add_library(tessaly_${name} SHARED ${ARGN})
  add_library(tessaly::${name} ALIAS tessaly_${name})
  target_include_directories(tessaly_${name}
    PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/include ${CMAKE_CURRENT_BINARY_DIR}/include)
  string(TOUPPER ${name} upper)
  generate_export_header(tessaly_${name}
    EXPORT_MACRO_NAME TESSALY_${upper}_API
    EXPORT_FILE_NAME ${CMAKE_CURRENT_BINARY_DIR}/include/${name}/export.h)
endfunction()

# tessaly_test(NAME SOURCE LIBRARIES...): one test program and its ctest entry.
function(tessaly_test name source)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE ${ARGN} Qt6::Test)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

# tessaly_quiet_generated(TARGET): no warnings from what the QML tools generated for this module.
function(tessaly_quiet_generated target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "/\\.rcc/qmlcache/.*\\.cpp$|_qmltyperegistrations\\.cpp$")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS "-w;-g0")
endfunction()
