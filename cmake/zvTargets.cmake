# What every target of the project has in common.

# The modules whose classes the libraries call; VTK's transitive modules are not on the link line.
set(ZV_VTK_COMPONENTS
  CommonCore CommonComputationalGeometry CommonDataModel CommonExecutionModel CommonMath
  CommonSystem CommonTransforms FiltersCore FiltersGeneral FiltersModeling FiltersSources
  GUISupportQt ImagingCore InteractionStyle InteractionWidgets RenderingCore RenderingFreeType
  RenderingLOD RenderingOpenGL2 RenderingUI)

# Compile options of our own code, never of those who use it.
function(zv_set_compile_options target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
    -Wcast-qual -Wformat=2 -Wundef -Wduplicated-cond -Wlogical-op)
  if(ZV_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(ZV_SANITIZE)
    # The checks confuse the compiler's own search for unset variables.
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined
      -fno-sanitize-recover=undefined -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
endfunction()

# Messages name the class they come from as src/widgets/<Class>: without the folder in which the
# project happens to be built, and without an ending.
function(zv_name_source_in_messages source name)
  set(path "${CMAKE_CURRENT_SOURCE_DIR}/${source}")
  # A compiler cache may hand the compiler the path as seen from the build folder.
  file(RELATIVE_PATH relative "${CMAKE_BINARY_DIR}" "${path}")
  set_property(SOURCE "${source}" APPEND PROPERTY COMPILE_OPTIONS
    "-fmacro-prefix-map=${path}=${name}" "-fmacro-prefix-map=${relative}=${name}")
endfunction()

function(zv_name_sources_in_messages folder)
  foreach(source IN LISTS ARGN)
    get_filename_component(class "${source}" NAME_WE)
    zv_name_source_in_messages("${source}" "${folder}/${class}")
  endforeach()
endfunction()

# A shared library of the family: hidden visibility, an export header, an alias zv::<name>.
function(zv_add_library target alias)
  cmake_parse_arguments(arg "" "" "SOURCES;HEADERS" ${ARGN})
  add_library(${target} SHARED ${arg_SOURCES} ${arg_HEADERS})
  add_library(zv::${alias} ALIAS ${target})
  include(GenerateExportHeader)
  generate_export_header(${target} EXPORT_FILE_NAME "${CMAKE_BINARY_DIR}/include/${target}Export.h")
  zv_set_compile_options(${target})
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_include_directories(${target} PUBLIC
    "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>"
    "$<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/include>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zvWidgets>")
  set_target_properties(${target} PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    VERSION "${PROJECT_VERSION}"
    SOVERSION "${PROJECT_VERSION_MAJOR}"
    EXPORT_NAME "${alias}"
    # The four lie in one folder, wherever that is.
    INSTALL_RPATH "$ORIGIN"
    DEFINE_SYMBOL "${target}_EXPORTS")
  install(TARGETS ${target} EXPORT zvTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
  install(FILES ${arg_HEADERS} "${CMAKE_BINARY_DIR}/include/${target}Export.h"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zvWidgets")
endfunction()

# An executable that renders: VTK's factories are filled by initialisers in its own objects.
function(zv_enable_rendering target)
  vtk_module_autoinit(TARGETS ${target} MODULES ${VTK_LIBRARIES})
endfunction()
