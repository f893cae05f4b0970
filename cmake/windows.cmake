# The Windows half: the library of everything that calls the Windows API, the resources, and nira.exe.
if(NOT windows)
  file(WRITE ${PROJECT_BINARY_DIR}/empty.cpp "")
  set(windows ${PROJECT_BINARY_DIR}/empty.cpp)
endif()
add_library(nira_windows STATIC ${windows})
# Portable code calls the platform headers that this library implements, and this library calls portable code:
# naming each other lets CMake repeat the pair for the linker.
target_link_libraries(nira_windows PUBLIC nira_options nira_portable
  user32 gdi32 comctl32 comdlg32 advapi32 shell32 ole32 uxtheme)
target_link_libraries(nira_portable PUBLIC nira_windows)
# A command calls a dialog, which calls what it decides, which calls the platform: more turns than CMake assumes.
set_target_properties(nira_portable nira_windows PROPERTIES LINK_INTERFACE_MULTIPLICITY 4)

# The product has no run-time type information; GoogleTest wants it, so this stands on our own libraries only.
target_compile_options(nira_portable PRIVATE -fno-rtti)
target_compile_options(nira_windows PRIVATE -fno-rtti)

add_library(nira_resources INTERFACE)
file(GLOB rc CONFIGURE_DEPENDS src/resources/nira.rc)
if(rc)
  file(GLOB_RECURSE rc_parts CONFIGURE_DEPENDS src/resources/*)
  list(REMOVE_ITEM rc_parts ${rc})
  set_source_files_properties(${rc} PROPERTIES OBJECT_DEPENDS "${rc_parts}")
  # An object library, so that the block of resources is linked although no code refers to it by name.
  add_library(nira_resources_object OBJECT ${rc})
  target_include_directories(nira_resources_object PRIVATE src src/resources)
  target_compile_options(nira_resources_object PRIVATE --codepage=65001)
  target_link_libraries(nira_resources INTERFACE nira_resources_object $<TARGET_OBJECTS:nira_resources_object>)
endif()

if(EXISTS ${entry})
  add_executable(nira ${entry})
  target_compile_options(nira PRIVATE -fno-rtti)
  target_link_libraries(nira PRIVATE nira_windows nira_portable nira_resources)
  target_link_options(nira PRIVATE -static -municode -mwindows -Wl,--gc-sections -s)
endif()
