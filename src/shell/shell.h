#pragma once

// The desktop stand-in for the shell of a handheld: everything at once. Each header is its own manual.
#include "shell/activation.h"
#include "shell/desktop_command_line.h"
#include "shell/desktop_frame.h"
#include "shell/desktop_keys.h"
#include "shell/full_screen.h"
#include "shell/input_panel.h"
#include "shell/low_memory.h"
#include "shell/menu_bar.h"
#include "shell/root_paths.h"
#include "shell/shell_text.h"
#include "shell/start_again.h"
#include "shell/text_window.h"
