// Every resource and command identifier of NIRA, by name.
//
// This header is read twice: by the C++ compiler and by the resource compiler, which knows neither namespaces
// nor constants. So the names are macros, and nothing but macros may stand here. The prefix tells what a
// number names:
//
//     IDS_   text of the string table (the texts themselves are in strings.inc)
//     IDB_   bitmap with a row of 16 x 16 images     IDI_   icon
//     IDD_   dialog                                  IDR_   menu, menu bar (RCDATA) or accelerator table
//     IDC_   control of a dialog
//     CMD_   command identifier, as it arrives in the low word of WM_COMMAND's first parameter
//     BARPOPUP_  command identifier of a drop-down button, which names the pop-up in WM_INITMENUPOPUP
//     BAR_   fields of a menu-bar button             IMG_   index of an image on a menu bar
//
// The numbers are part of what is outside the program (scripts that post commands, translated resources): a
// number once given keeps its meaning, and one that is free stays free.
#pragma once

// ---- Icons, bitmaps, dialogs, menus, accelerators ---------------------------------------------------------
#define IDI_NIRA 100  // the lowest icon number is the one that file managers show for the program
#define IDI_FOLDER 5001
#define IDI_FILE 5002

#define IDB_FILE_DIALOG 6001  // two images: up one level, create new folder
#define IDB_BAR 6002          // thirteen images: IMG_WINDOWS to IMG_INDENT_LESS

#define IDD_ABOUT 103
#define IDD_FILE 2001
#define IDD_NEW_FOLDER 2002
#define IDD_FIND 2003
#define IDD_REPLACE 2004
#define IDD_CHOOSE_FONT 2005
#define IDD_OPTIONS_FORMAT 2006
#define IDD_OPTIONS_EDITOR 2007
#define IDD_GO_TO 2009
#define IDD_OPTIONS_WORDS 2010
#define IDD_OPTIONS_INDENT 2011

#define IDR_MENU_LINE_ENDS 3001  // the pop-up of the save dialog's drop-down
#define IDR_MENU_MAIN 3002       // the four pop-ups of the main menu bar
#define IDR_ACCELERATORS 8000

// ---- Menu bars (RCDATA) -----------------------------------------------------------------------------------
#define IDR_BAR_OPEN_FILE 3000
#define IDR_BAR_SAVE_FILE 3001
#define IDR_BAR_MAIN 3002
#define IDR_BAR_FIND_NEXT 3003     // on the main window, after Find
#define IDR_BAR_REPLACE_NEXT 3004  // on the main window, after Replace
#define IDR_BAR_UNDO 3005
#define IDR_BAR_OK_CANCEL 3006
#define IDR_BAR_FIND_DIALOG 3007
#define IDR_BAR_REPLACE_DIALOG 3008
#define IDR_BAR_OK 3009
#define IDR_BAR_NAVIGATE 3011
#define IDR_BAR_INDENT 3012

// A menu bar is a sequence of 16-bit signed words: the menu whose pop-ups its drop-downs open (BAR_NO_MENU:
// none), the number of buttons, then seven words for each button: image, command, state, style, label text,
// tooltip text, position of the pop-up in the menu. A button with an image has a tooltip and no label; a text
// button and a drop-down have a label and no tooltip. 0 stands for no text.
#define BAR_NO_MENU -1
#define BAR_NO_IMAGE -2
#define BAR_NO_POPUP -1
#define BAR_ENABLED 4
#define BAR_SEPARATOR 1
#define BAR_BUTTON 16
#define BAR_DROPDOWN 24
#define BAR_BUTTON_WORDS 7

// Positions of the pop-ups in IDR_MENU_MAIN, and of the nested ones that the program fills or looks up.
#define POPUP_FILE 0
#define POPUP_EDIT 1
#define POPUP_WINDOWS 2
#define POPUP_NAVIGATE 3
#define POPUP_FILE_RECENT 8
#define POPUP_NAVIGATE_GO_TO_BOOKMARK 8
#define POPUP_NAVIGATE_SET_BOOKMARK 9

// ---- Images on menu bars ----------------------------------------------------------------------------------
#define IMG_WINDOWS 0
#define IMG_GROUP_UNDO 1
#define IMG_CANCEL 2
#define IMG_FILE 3
#define IMG_EDIT 4
#define IMG_NAVIGATE 5
#define IMG_PAGE_DOWN 6
#define IMG_PAGE_UP 7
#define IMG_FILE_BOTTOM 8
#define IMG_FILE_TOP 9
#define IMG_GO_TO 10
#define IMG_INDENT_MORE 11
#define IMG_INDENT_LESS 12
#define IMG_BAR_COUNT 13
// The system's standard small images follow in their own order.
#define IMG_CUT 13
#define IMG_COPY 14
#define IMG_PASTE 15
#define IMG_UNDO 16
#define IMG_REDO 17
#define IMG_OPEN 20
#define IMG_SAVE 21
#define IMG_FIND 25
#define IMG_REPLACE 26
// On the bars of the file dialog.
#define IMG_UP_ONE_LEVEL 0
#define IMG_NEW_FOLDER 1
#define IMG_FILE_DIALOG_COUNT 2
#define IMG_SIZE 16  // width and height of every image, in pixels

// ---- Drop-down buttons ------------------------------------------------------------------------------------
#define BARPOPUP_FILE 1014
#define BARPOPUP_EDIT 1015
#define BARPOPUP_WINDOWS 1022
#define BARPOPUP_LINE_ENDS 1023
#define BARPOPUP_NAVIGATE 1062

// ---- Commands ---------------------------------------------------------------------------------------------
#define CMD_NEW 7001
#define CMD_OPEN 7002
#define CMD_SAVE 7003
#define CMD_SAVE_AS 7004
#define CMD_EXIT 7005
#define CMD_CUT 7006
#define CMD_COPY 7007
#define CMD_PASTE 7008
#define CMD_CLEAR 7009
#define CMD_SELECT_ALL 7010
#define CMD_CLOSE 7011
#define CMD_CLOSE_ALL 7012
#define CMD_LINE_END_LF 7013  // minus this: the line-end type of a document
#define CMD_LINE_END_CR 7014
#define CMD_LINE_END_CRLF 7015
#define CMD_FIND 7016
#define CMD_REPLACE 7017
#define CMD_ABOUT 7018
#define CMD_UNDO 7019
#define CMD_REDO 7020
#define CMD_TOGGLE_WRAP 7021
#define CMD_OPTIONS 7022
#define CMD_GO_TO 7024
#define CMD_FILE_TOP 7025
#define CMD_FILE_BOTTOM 7026
#define CMD_PAGE_UP 7027
#define CMD_PAGE_DOWN 7028
#define CMD_MARK_START 7029
#define CMD_MARK_END 7030
#define CMD_INDENT_MORE 7031
#define CMD_INDENT_LESS 7032
#define CMD_PASTE_OTHER 7033  // paste in the mode that CMD_PASTE does not use
#define CMD_SAVE_ALL 7034

// Ranges: the first identifier of each, and how many there are.
#define CMD_SET_BOOKMARK_FIRST 7400
#define CMD_GO_TO_BOOKMARK_FIRST 7410
#define CMD_BOOKMARK_COUNT 10
#define CMD_RECENT_FIRST 7420
#define CMD_RECENT_COUNT 10
#define CMD_BUFFER_FIRST 7500  // one for each open document

// Commands of bar buttons and keys that no menu offers.
#define CMD_OK 1
#define CMD_CANCEL 2
#define CMD_DIALOG_ACCEPT 1007  // the file dialog's Open or Save
#define CMD_DIALOG_CANCEL 1008
#define CMD_UP_ONE_LEVEL 1009
#define CMD_NEW_FOLDER 1010
#define CMD_REFRESH 1013
#define CMD_FIND_NEXT 1028
#define CMD_REPLACE_NEXT 1029
#define CMD_CLOSE_FIND_BAR 1031
#define CMD_REPLACE_ALL 1032
#define CMD_GROUP_UNDO 1033
#define CMD_CLOSE_UNDO_BAR 1034
#define CMD_CLOSE_NAVIGATE_BAR 1066
#define CMD_NEXT_BUFFER 1068
#define CMD_CLOSE_INDENT_BAR 1078

// ---- Controls of dialogs ----------------------------------------------------------------------------------
// File dialog
#define IDC_FILE_NAME 1000
#define IDC_FILE_ENCODING 1001
#define IDC_FILE_NAME_LABEL 1002
#define IDC_FILE_ENCODING_LABEL 1003
#define IDC_FILE_LIST 1004
#define IDC_FILE_RULE 1005
#define IDC_FILE_FOLDER 1006
// Create folder
#define IDC_NEW_FOLDER_LABEL 1011
#define IDC_NEW_FOLDER_NAME 1012
// Find and Replace
#define IDC_PATTERN 1017
#define IDC_MATCH_CASE 1018
#define IDC_DIRECTION 1019
#define IDC_UP 1020
#define IDC_DOWN 1021
#define IDC_REPLACE_LABEL 1024
#define IDC_WITH_LABEL 1025
#define IDC_REPLACEMENT 1026
#define IDC_FIND_LABEL 1027
#define IDC_WHOLE_WORD 1071
// Choose font
#define IDC_FONT_LABEL 1035
#define IDC_FONT_FACE 1036
#define IDC_FONT_SIZE_LABEL 1037
#define IDC_FONT_SIZE 1038
#define IDC_FONT_BOLD 1039
#define IDC_FONT_ITALIC 1040
#define IDC_FONT_UNDERLINE 1041
#define IDC_FONT_STRIKETHROUGH 1042
#define IDC_FONT_CLEARTYPE 1054
#define IDC_FONT_PREVIEW 1082
// Options: Format
#define IDC_FORMAT_CHOOSE_FONT 1043
#define IDC_FORMAT_FONT 1044
#define IDC_FORMAT_COLORS 1045
#define IDC_FORMAT_COLOR_SET 1046
#define IDC_FORMAT_FORE_LABEL 1047
#define IDC_FORMAT_BACK_LABEL 1048
#define IDC_FORMAT_FORE 1049
#define IDC_FORMAT_BACK 1050
// Options: Editor
#define IDC_EDITOR_SAFE_SAVE 1060
#define IDC_EDITOR_UNDO_SIZE 1061
#define IDC_EDITOR_BOM_SAVE 1067
#define IDC_EDITOR_HISTORY_SIZE 1079
#define IDC_EDITOR_WRAP 1080
#define IDC_EDITOR_ENCODING 1081
// Options: Words
#define IDC_WORDS_SEPARATORS 1069
#define IDC_WORDS_STOP_AT_END 1070
// Options: Indent
#define IDC_INDENT_TAB_SIZE 1052
#define IDC_INDENT_KEEP 1053
#define IDC_INDENT_PASTE_NORMAL 1072
#define IDC_INDENT_PASTE_SMART 1073
#define IDC_INDENT_BASE_FIRST 1074
#define IDC_INDENT_BASE_MINIMUM 1075
#define IDC_INDENT_PASTE_GROUP 1076
#define IDC_INDENT_BASE_GROUP 1077
// Go to
#define IDC_GO_TO_RANGE 1063
#define IDC_GO_TO_LINE 1064

// ---- String table -----------------------------------------------------------------------------------------
#define IDS_OVERWRITE_QUESTION 4001
#define IDS_FILE_NOT_FOUND 4002
#define IDS_OPEN 4003
#define IDS_CANCEL 4004
#define IDS_SAVE 4005
#define IDS_UP_ONE_LEVEL 4006
#define IDS_SAVE_FILE_TITLE 4007
#define IDS_OPEN_FILE_TITLE 4008
#define IDS_NEW_FOLDER 4009
#define IDS_COLUMN_NAME 4010
#define IDS_COLUMN_SIZE 4011
#define IDS_COLUMN_MODIFIED 4012
#define IDS_REFRESH 4013
#define IDS_ERROR 4014
#define IDS_CONFIRMATION 4015
#define IDS_FILE 4016
#define IDS_EDIT 4017
#define IDS_CUT 4018
#define IDS_COPY 4019
#define IDS_PASTE 4020
#define IDS_BUFFERS 4021
#define IDS_UNTITLED 4022
#define IDS_LINE_END_TYPE 4023
#define IDS_SAVE_CHANGES_QUESTION 4024
#define IDS_FILE_MODIFIED 4025
#define IDS_FIND_NEXT 4026
#define IDS_REPLACE 4027
#define IDS_PATTERN_NOT_FOUND 4028
#define IDS_INFORMATION 4029
#define IDS_OCCURRENCES_REPLACED 4030
#define IDS_ERROR_READING 4031
#define IDS_ERROR_DECODER 4032
#define IDS_UNDO 4033
#define IDS_REDO 4034
#define IDS_GROUP_UNDO 4035
#define IDS_OPTIONS_TITLE 4036
#define IDS_COLORS_TEXT 4037
#define IDS_COLORS_SELECTION 4038
#define IDS_TAB_SIZE_RANGE 4039
#define IDS_ERROR_SAVING_OPTIONS 4040
#define IDS_OK 4041
#define IDS_FIND 4042
#define IDS_REPLACE_ALL 4043
// 4044 to 4049 are free.
#define IDS_ERROR_WRITING 4050
#define IDS_ERROR_ENCODER 4051
#define IDS_ERROR_RENAMING 4052
#define IDS_UNDO_SIZE_RANGE 4053
#define IDS_NAVIGATE 4054
#define IDS_ENTER_POSITIVE 4055
// 4056 is free.
#define IDS_PAGE_UP 4057
#define IDS_PAGE_DOWN 4058
#define IDS_FILE_TOP 4059
#define IDS_FILE_BOTTOM 4060
#define IDS_GO_TO 4061
#define IDS_EMPTY_LIST 4062
#define IDS_INDENT_MORE 4063
#define IDS_INDENT_LESS 4064
#define IDS_PASTE_NORMAL 4065
#define IDS_PASTE_SMART 4066
#define IDS_HISTORY_SIZE_RANGE 4067
#define IDS_FIRST 4001
#define IDS_LAST 4067
