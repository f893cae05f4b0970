# What every target of our own is compiled with. GoogleTest is not ours and gets none of it.
add_library(nira_options INTERFACE)
target_compile_features(nira_options INTERFACE cxx_std_20)
target_include_directories(nira_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(nira_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)

if(WIN32)
  # 0x0601 is Windows 7, the oldest system NIRA runs on.
  target_compile_definitions(nira_options INTERFACE
    UNICODE _UNICODE WINVER=0x0601 _WIN32_WINNT=0x0601 _WIN32_IE=0x0800)
  target_compile_options(nira_options INTERFACE -ffunction-sections -fdata-sections)
endif()

if(NIRA_SANITIZE)
  # For GoogleTest as well: a container that crosses from sanitized into plain code gives false alarms.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(NIRA_FUZZ)
  # Coverage of the code under test; the targets themselves add libFuzzer's own main.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
