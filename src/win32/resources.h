#pragma once

// Numbers of the program's pictures in its resources. Macros, because the resource compiler reads this file too.

// Windows shows the icon with the lowest number as the file's own.
#define IDI_VEXTREL 101

// The grey dot at 96, 144 and 192 DPI: 32, 48 and 64 pixels wide, its hot spot in the centre.
#define IDC_GREYDOT_96 111
#define IDC_GREYDOT_144 112
#define IDC_GREYDOT_192 113

// The toolbar's 15 pictures side by side, 16, 24 and 32 pixels high, with straight alpha. Load them with
// LR_CREATEDIBSECTION, or the alpha is lost.
#define IDB_TOOLBAR_100 121
#define IDB_TOOLBAR_150 122
#define IDB_TOOLBAR_200 123
#define IDB_TOOLBAR_DISABLED_100 131
#define IDB_TOOLBAR_DISABLED_150 132
#define IDB_TOOLBAR_DISABLED_200 133
