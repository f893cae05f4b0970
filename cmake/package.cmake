# The archive for a Windows computer: what to unpack, and setup.cmd to start there.
#   cmake --build build/windows --target package
# What there is to read lies where it lies here, so that its links and pictures are found.
set(stage ${PROJECT_BINARY_DIR}/package)
add_custom_target(package
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${stage}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${stage}/NIRA/docs ${stage}/NIRA/plugins/example
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:nira> $<TARGET_FILE:nira_codecs> setup.cmd README.md LICENSE
          CONTRIBUTING.md ${stage}/NIRA
  COMMAND ${CMAKE_COMMAND} -E copy docs/manual.md docs/plugins.md docs/architecture.md docs/performance.md
          ${stage}/NIRA/docs
  COMMAND ${CMAKE_COMMAND} -E copy_directory docs/screenshots ${stage}/NIRA/docs/screenshots
  COMMAND ${CMAKE_COMMAND} -E copy plugins/nira_codec.h ${stage}/NIRA/plugins
  COMMAND ${CMAKE_COMMAND} -E copy plugins/example/latin1_win.cpp ${stage}/NIRA/plugins/example
  COMMAND ${CMAKE_COMMAND} -E chdir ${stage} ${CMAKE_COMMAND} -E tar cf ${PROJECT_BINARY_DIR}/nira-windows.zip
          --format=zip NIRA
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  DEPENDS nira nira_codecs
  COMMENT "Packing nira-windows.zip"
  VERBATIM)
