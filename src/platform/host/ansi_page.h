// Which ANSI code page the host has.
#pragma once

namespace nira {

enum class AnsiPage {
    kWestern,   // Windows-1252: single bytes only
    kTwoBytes,  // a stand-in for the East Asian pages: 81–9F and E0–FC begin two-byte characters
};

// Windows-1252 until this is called.
//
// In the two-byte page, ASCII is itself; a lead byte with a trail byte 40–FF is U+4E00 + 192 × (number of the
// lead byte, from 0) + (trail − 40 hexadecimal); a lead byte with anything else behind it, or at the end, is
// U+30FB alone; the other bytes from 80 are U+FF00 + the byte.
void HostSetAnsiPage(AnsiPage page);

}  // namespace nira
