#include "settings/options_store.h"

#include <algorithm>
#include <iterator>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "app/services/registry_key.h"
#include "platform/system_colors.h"
#include "resources/resource.h"
#include "settings/options.h"
#include "view/fonts.h"

namespace nira {

namespace {

constexpr const char16_t* kOptionsKey = u"\\Software\\NIRA";

constexpr char16_t kDefaultFace[] = u"Courier New";
constexpr char16_t kDefaultFontAttributes = kFontClearType | 14;

// The numbers of the Options in the order in which they are written.
struct NumberValue {
    const char16_t* name;
    uint32_t Options::*field;
    uint32_t missing;
};

constexpr NumberValue kNumbers[] = {
    {u"safeSave", &Options::safeSave, 0},   {u"undoSize", &Options::undoSize, 100},
    {u"bomSave", &Options::bomSave, 1},     {u"stopWordEnd", &Options::stopWordEnd, 0},
    {u"tabSize", &Options::tabSize, 3},     {u"keepIndent", &Options::keepIndent, 0},
    {u"PasteMode", &Options::pasteMode, 0}, {u"SmartBase", &Options::smartBase, 0},
    {u"HistLen", &Options::histLen, 10},    {u"WordWrapDefault", &Options::wordWrapDefault, 0},
};

struct ColorValue {
    const char16_t* name;
    TextStyle Options::*style;
    ColorRef TextStyle::*color;
    SystemColorIndex missing;
};

constexpr ColorValue kColors[] = {
    {u"textFore", &Options::text, &TextStyle::fore, SystemColorIndex::kWindowText},
    {u"textBack", &Options::text, &TextStyle::back, SystemColorIndex::kWindow},
    {u"selFore", &Options::selection, &TextStyle::fore, SystemColorIndex::kHighlightText},
    {u"selBack", &Options::selection, &TextStyle::back, SystemColorIndex::kHighlight},
};

// The face, then the attribute unit where the face's terminator was, then the terminator.
char16_t* DefaultFont() {
    constexpr size_t kFaceUnits = std::size(kDefaultFace) - 1;
    auto* font = MemAllocArray<char16_t>(nullptr, kFaceUnits + 2);
    std::copy_n(kDefaultFace, kFaceUnits, font);
    font[kFaceUnits] = kDefaultFontAttributes;
    return font;
}

char16_t* CopyText(RegKey* key, const char16_t* name, const char16_t* missing) {
    const char16_t* stored = RegKeyQueryText(key, name);
    return MemStrDup(nullptr, stored != nullptr ? stored : missing);
}

void ReadTexts(RegKey* key, Options* options) {
    const char16_t* font = RegKeyQueryText(key, u"Font");
    options->font = font != nullptr ? MemStrDup(nullptr, font) : DefaultFont();
    options->wordSeparators = CopyText(key, u"WordSeparator", u",.;");
    options->defaultEncoding = CopyText(key, u"DefaultEncoding", u"ANSI");
}

void ReadAll(RegKey* key, Options* options) {
    ReadTexts(key, options);
    options->text.font = AcquireFont(options->font);
    options->selection.font = options->text.font;
    for (const ColorValue& color : kColors) {
        options->*color.style.*color.color = RegKeyQueryDword(key, color.name, SystemColor(color.missing));
    }
    for (const NumberValue& number : kNumbers) {
        options->*number.field = RegKeyQueryDword(key, number.name, number.missing);
    }
}

}  // namespace

int LoadOptions() {
    Options& options = TheOptions();
    options = {};
    RegKey* key = RegKeyOpen(RegistryRoot::kCurrentUser, kOptionsKey);
    const bool loaded = Guarded([&] { ReadAll(key, &options); });
    RegKeyClose(key);
    return loaded ? 1 : 0;
}

void SaveOptions() {
    RegKey* key = RegKeyOpen(RegistryRoot::kCurrentUser, kOptionsKey);
    if (key == nullptr) {
        ShowErrorMessage(IDS_ERROR_SAVING_OPTIONS);
        return;
    }
    const Options& options = TheOptions();
    RegKeySetString(key, u"Font", options.font);
    RegKeySetString(key, u"WordSeparator", options.wordSeparators);
    for (const ColorValue& color : kColors) {
        RegKeySetDword(key, color.name, options.*color.style.*color.color);
    }
    for (const NumberValue& number : kNumbers) RegKeySetDword(key, number.name, options.*number.field);
    RegKeySetString(key, u"defaultEncoding", options.defaultEncoding);
    RegKeyClose(key);
}

void FreeOptions() {
    Options& options = TheOptions();
    for (char16_t** text : {&options.font, &options.wordSeparators, &options.defaultEncoding}) {
        MemFree(nullptr, *text);
        *text = nullptr;
    }
}

}  // namespace nira
