// The pages Editor, Words and Indent of the Options sheet.
#pragma once

#include "settings/property_page.h"

namespace nira {

extern const PropertyPage kEditorPage;
extern const PropertyPage kWordsPage;
extern const PropertyPage kIndentPage;

}  // namespace nira
