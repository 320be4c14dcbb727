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
#define IDC_PORT_FEEDS_LABEL 321
#define IDC_PORT_FEEDS 322
#define IDC_PORT_ADD_FEED 323
#define IDC_PORT_REMOVE_FEED 324
#define IDC_PORT_PRODUCTS_LABEL 325
#define IDC_PORT_PRODUCTS 326
#define IDC_PORT_ADD_PRODUCT 327
#define IDC_PORT_REMOVE_PRODUCT 328

#define IDD_PARAMETER 340

#define IDD_REPORT 420
#define IDC_REPORT_LABEL 421
#define IDC_REPORT_LIST 422
#define IDC_REPORT_TEXT 423
#define IDC_REPORT_ADD 424
#define IDC_REPORT_REMOVE 425

#define IDD_MATLAB 440

#define IDD_FILES 460
#define IDC_FILES_LABEL 461
#define IDC_FILES_LIST 462
#define IDC_FILES_BROWSE 463
#define IDC_FILES_NEW 464
#define IDC_FILES_OPEN 465
#define IDC_FILES_RENAME 466
#define IDC_FILES_REMOVE 467
#define IDC_FILES_SAVE_AS 468

#define IDD_ABOUT 480
#define IDC_ABOUT_PRODUCT 481
#define IDC_ABOUT_CODE_LABEL 482
#define IDC_ABOUT_CODE 483
#define IDC_ABOUT_TYPE_LABEL 484
#define IDC_ABOUT_TYPE 485
#define IDC_ABOUT_VERSION_LABEL 486
#define IDC_ABOUT_VERSION 487
#define IDC_ABOUT_MATLAB_LABEL 488
#define IDC_ABOUT_MATLAB 489
#define IDC_ABOUT_LICENCE 490

#define IDD_INPUT 500
#define IDC_INPUT_PROMPT 501
#define IDC_INPUT_TEXT 502
