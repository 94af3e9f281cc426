# What a program finds by name when it runs, and so links nothing of: the plugins that a QML engine loads, and the
# programs that the device or a test starts. Both are collected from the tree itself, so that none can be forgotten.
add_custom_target(tessaly_plugins)
add_custom_target(tessaly_programs)

# tessaly_starts_programs(TARGET): the device's programs and the dictionary server are there when it runs.
function(tessaly_starts_programs target)
  add_dependencies(${target} tessaly_programs)
endfunction()

# tessaly_shows_interface(TARGET): it has a QML engine; TESSALY_QML_DIR is that engine's import path.
function(tessaly_shows_interface target)
  target_compile_definitions(${target} PRIVATE TESSALY_QML_DIR="${CMAKE_BINARY_DIR}/qml")
  add_dependencies(${target} tessaly_plugins tessaly_programs)
endfunction()

# tessaly_targets_below(RESULT DIRECTORY): all targets that the directory and those below it define.
function(tessaly_targets_below result directory)
  get_property(targets DIRECTORY ${directory} PROPERTY BUILDSYSTEM_TARGETS)
  get_property(subdirectories DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
  foreach(subdirectory ${subdirectories})
    tessaly_targets_below(below ${subdirectory})
    list(APPEND targets ${below})
  endforeach()
  set(${result} ${targets} PARENT_SCOPE)
endfunction()

# tessaly_collect_run_time(DIRECTORY...): to be called when all targets are defined.
function(tessaly_collect_run_time)
  foreach(directory ${ARGN})
    tessaly_targets_below(targets ${PROJECT_SOURCE_DIR}/${directory})
    foreach(target ${targets})
      get_target_property(type ${target} TYPE)
      if(type STREQUAL "MODULE_LIBRARY")
        add_dependencies(tessaly_plugins ${target})
      elseif(type STREQUAL "EXECUTABLE")
        add_dependencies(tessaly_programs ${target})
      endif()
    endforeach()
  endforeach()
endfunction()
