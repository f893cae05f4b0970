# The archive for a Windows computer: what to unpack, and setup.cmd to start there.
#   cmake --build build/windows --target package
set(stage ${PROJECT_BINARY_DIR}/package)
set(papers README.md LICENSE docs/manual.md)
if(EXISTS ${PROJECT_SOURCE_DIR}/docs/plugins.md)
  list(APPEND papers docs/plugins.md)
endif()
list(TRANSFORM papers PREPEND ${PROJECT_SOURCE_DIR}/)
add_custom_target(package
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${stage}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${stage}/NIRA
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:nira> $<TARGET_FILE:nira_codecs> ${PROJECT_SOURCE_DIR}/setup.cmd
          ${papers} ${stage}/NIRA
  COMMAND ${CMAKE_COMMAND} -E chdir ${stage} ${CMAKE_COMMAND} -E tar cf ${PROJECT_BINARY_DIR}/nira-windows.zip
          --format=zip NIRA
  DEPENDS nira nira_codecs
  COMMENT "Packing nira-windows.zip"
  VERBATIM)
