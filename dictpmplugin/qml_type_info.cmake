# Makes plugins.qmltypes from what moc knows of the classes that QML sees.
set(described
  data_manager.h
  dictionarieslistmodel.h
  dictionary_id_pair.h
  dictpmcontroller.h
  languageheaderinjectorproxymodel.h
  qml_type_info.h)
# The morphology classes are the device library's; its target knows where their headers are.
get_target_property(dictionaries_folders tessaly::dictionaries INTERFACE_INCLUDE_DIRECTORIES)
foreach(name explorer file_existance_map map url_map)
  find_file(header dictionaries/morph_${name}.h
    PATHS ${dictionaries_folders} NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH NO_CACHE REQUIRED)
  list(APPEND described ${header})
  unset(header)
endforeach()

set(type_info_folder ${CMAKE_CURRENT_BINARY_DIR}/type_info)
file(MAKE_DIRECTORY ${type_info_folder})
set(type_info ${module_folder}/plugins.qmltypes)

set(descriptions)
foreach(header ${described})
  get_filename_component(name ${header} NAME_WE)
  get_filename_component(header ${header} ABSOLUTE)
  set(description ${type_info_folder}/${name}.cpp)
  # moc gives a base class the name that the header gives it; the tools know it by its full name only.
  set(full_names)
  if(header MATCHES "morph_(url|file_existance)_map")
    set(full_names -DMorphMap=tessaly::dictionary::MorphMap)
  endif()
  add_custom_command(OUTPUT ${description}.json
    COMMAND Qt6::moc --output-json -o ${description} ${header} ${full_names}
      "-I$<JOIN:$<TARGET_PROPERTY:dictpm_core,INCLUDE_DIRECTORIES>,;-I>"
    DEPENDS ${header}
    COMMAND_EXPAND_LISTS VERBATIM)
  list(APPEND descriptions ${description}.json)
endforeach()

# What the classes stand on, as Qt itself describes it.
set(qt_descriptions)
foreach(library Core Qml)
  get_target_property(sources Qt6::${library} INTERFACE_SOURCES)
  string(REGEX MATCH "[^;:<>]*_metatypes\\.json" description "${sources}")
  list(APPEND qt_descriptions ${description})
endforeach()
list(JOIN qt_descriptions "," qt_descriptions)

add_custom_command(OUTPUT ${type_info}
  COMMAND Qt6::moc --collect-json -o ${type_info_folder}/all.json ${descriptions}
  COMMAND Qt6::qmltyperegistrar --generate-qmltypes=${type_info} --import-name=com.tessaly.dictionaries
    --major-version=1 --minor-version=0 --foreign-types=${qt_descriptions} -o ${type_info_folder}/unused.cpp
    ${type_info_folder}/all.json
  DEPENDS ${descriptions}
  VERBATIM)
add_custom_target(dictpm_type_info ALL DEPENDS ${type_info})
