// A page of a property sheet as a record of what it does, and what pages do with their controls.
//
// The sheet's window procedure (settings/options_sheet.h) calls the record; whatever a page does may run out
// of memory, which ends there. Controls are named by their identifiers, places are pixels.
#pragma once

#include <cstdint>

#include "platform/handles.h"
#include "settings/options_pages.h"

namespace nira {

struct PropertyPage {
    uint32_t dialog;                                // its template
    void (*fill)(WindowHandle page);                // gives the controls their first values
    void (*apply)(WindowHandle page);               // the sheet was confirmed
    void (*arrange)(WindowHandle page, int width);  // places the controls in a page of this width
    NumberFields (*numbers)();                      // what must be in range before the page is left; or null
    // Commands of controls and owner-drawn controls, as they come; or null. Non-zero for what it has handled.
    intptr_t (*handle)(WindowHandle page, uint32_t message, uintptr_t first, intptr_t second);
};

// A control's text; local heap, owned by the caller.
char16_t* ControlText(WindowHandle page, int control);
void SetControlText(WindowHandle page, int control, const char16_t* text);
void SetControlNumber(WindowHandle page, int control, uint32_t value);

bool IsControlChecked(WindowHandle page, int control);
void CheckControl(WindowHandle page, int control, bool checked);

// Controls reach to the same distance from the page's right edge as from its left one.
void WidenControls(WindowHandle page, int width, const int* controls, int count);

// A length of the page's dialog units in pixels, vertically.
int DialogHeight(WindowHandle page, int units);

// Stores the page's numbers in the sheet's copy up to the first one that is out of range. Returns the control
// of that one, or 0 when all are stored.
int TakeNumbers(WindowHandle page, NumberFields numbers);

}  // namespace nira
