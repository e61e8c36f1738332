#pragma once

// The one place that includes the Windows headers, so that every file sees them with the same switches (they are set on
// the command line: UNICODE, STRICT, NOMINMAX, ...).

#include <windows.h>
#include <windowsx.h>

#include <commctrl.h>
