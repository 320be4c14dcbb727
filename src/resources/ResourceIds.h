/* Numbers of the module's windows and icons, for the code and for the resource compiler. Each window has a range
   of its own, so that its controls' numbers are its own. */
#pragma once

#define IDI_UNIT 300

#define IDD_EDIT 310
#define IDC_EDIT_TABS 311
#define IDC_EDIT_SAVE 312
#define IDC_EDIT_LOAD 313
#define IDC_EDIT_HELP 314

#define IDD_PORT 320

#define IDD_PARAMETER 340

#define IDD_REPORT 420

#define IDD_MATLAB 440

#define IDD_FILES 460

#define IDD_ABOUT 480

#define IDD_INPUT 500
#define IDC_INPUT_PROMPT 501
#define IDC_INPUT_TEXT 502
