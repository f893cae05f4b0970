#include <windows.h>

#include <commdlg.h>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/utf16.h"
#include "files/codecs.h"
#include "files/file_dialogs.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/root_paths.h"
#include "shell/shell_text.h"

// The system's own dialogs, until NIRA brings one for small screens. Their list of file types serves as the
// list of encodings; every type shows all files.

namespace nira {

namespace {

constexpr DWORD kPathRoom = 32768;  // the longest path that the system knows

struct DialogTexts {
    wchar_t path[kPathRoom];  // proposed name on entry, chosen path on return
    wchar_t* folder;          // where it begins; owned
    wchar_t* filter;          // the encodings; owned
};

// Pairs of terminated texts, name and pattern, and an empty one behind the last.
wchar_t* EncodingFilter() {
    constexpr char16_t kAllFiles[] = u"*.*";
    constexpr size_t kPatternUnits = sizeof(kAllFiles) / sizeof(kAllFiles[0]);
    size_t units = 1;
    for (uint32_t i = 0; i < TheCodecList().count; ++i)
        units += Utf16Length(CodecName(i)) + 1 + kPatternUnits;
    char16_t* filter = MemAllocArray<char16_t>(nullptr, units);
    char16_t* end = filter;
    for (uint32_t i = 0; i < TheCodecList().count; ++i) {
        end += Utf16Copy(end, Utf16Length(CodecName(i)) + 1, CodecName(i)) + 1;
        end += Utf16Copy(end, kPatternUnits, kAllFiles) + 1;
    }
    return ToWide(filter);
}

// Tells the dialog where to begin: `path` up to `name`, and the name itself.
void ProposeParts(DialogTexts* texts, const char16_t* path, const char16_t* name) {
    Utf16Copy(FromWide(texts->path), kPathRoom, name);
    const auto folderUnits = static_cast<size_t>(name - path);
    texts->folder = ToWide(MemAllocArray<char16_t>(nullptr, folderUnits + 1));
    Utf16Copy(FromWide(texts->folder), folderUnits + 1, path);
}

// Splits a path at its last backslash into the folder and the name that the dialog proposes; no path is the
// home folder without a name.
void ProposePath(DialogTexts* texts, const char16_t* initialPath) {
    wchar_t* desktopPath =
        initialPath != nullptr ? shell::DesktopPath(ToWide(initialPath)) : shell::HomeFolder();
    if (desktopPath == nullptr) return;
    const char16_t* path = FromWide(desktopPath);
    const char16_t* mark = Utf16FindLast(path, u'\\');
    if (initialPath == nullptr) {
        ProposeParts(texts, path, path + Utf16Length(path));
    } else {
        ProposeParts(texts, path, mark != nullptr ? mark + 1 : path);
    }
    shell::FreeShellText(desktopPath);
}

bool RunSystemDialog(DialogTexts* texts, uint32_t* codecIndex, bool saving) {
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = ToHwnd(NoticeOwner());
    dialog.lpstrFilter = texts->filter;
    dialog.nFilterIndex = *codecIndex + 1;
    dialog.lpstrFile = texts->path;
    dialog.nMaxFile = kPathRoom;
    dialog.lpstrInitialDir = texts->folder;
    dialog.lpstrTitle = ToWide(LoadResString(saving ? IDS_SAVE_FILE_TITLE : IDS_OPEN_FILE_TITLE));
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | OFN_ENABLESIZING;
    dialog.Flags |= saving ? OFN_OVERWRITEPROMPT | OFN_NOREADONLYRETURN : OFN_FILEMUSTEXIST;
    BOOL chosen = saving ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog);
    if (!chosen && CommDlgExtendedError() == FNERR_INVALIDFILENAME) {
        texts->path[0] = 0;  // the dialog does not open at all on a name it dislikes
        chosen = saving ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog);
    }
    if (chosen && dialog.nFilterIndex > 0) *codecIndex = dialog.nFilterIndex - 1;
    return chosen != FALSE;
}

char16_t* AskForPath(const char16_t* initialPath, uint32_t* codecIndex, bool saving) {
    DialogTexts* texts = nullptr;
    char16_t* path = nullptr;
    Guarded([&] {
        texts = MemAllocArray<DialogTexts>(nullptr, 1);
        texts->filter = EncodingFilter();
        ProposePath(texts, initialPath);
        if (RunSystemDialog(texts, codecIndex, saving)) path = MemStrDup(nullptr, FromWide(texts->path));
    });
    if (texts == nullptr) return nullptr;
    MemFree(nullptr, texts->filter);
    MemFree(nullptr, texts->folder);
    MemFree(nullptr, texts);
    return path;
}

}  // namespace

char16_t* OpenDialog(const char16_t* initialPath, uint32_t* codecIndex) {
    return AskForPath(initialPath, codecIndex, false);
}

char16_t* SaveDialog(const char16_t* initialPath, uint32_t* codecIndex, uint32_t*) {
    return AskForPath(initialPath, codecIndex, true);
}

}  // namespace nira
