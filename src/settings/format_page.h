// The page Format of the Options sheet: the font of the text, and the colours of text and selection.
#pragma once

#include "settings/property_page.h"

namespace nira {

extern const PropertyPage kFormatPage;

}  // namespace nira
