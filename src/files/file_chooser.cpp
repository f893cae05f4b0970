#include "files/file_chooser.h"

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/utf16.h"
#include "files/folder_paths.h"
#include "platform/folders.h"
#include "platform/messages.h"
#include "resources/resource.h"

namespace nira {

namespace {

bool List(FileChooser* chooser, const char16_t* folder) {
    const ListResult result = ListFolder(&chooser->listing, folder);
    if (result == ListResult::kFailed) ReportLastError();
    return result == ListResult::kListed;
}

// Lists `folder`, a block that becomes the chooser's; when it cannot be listed, it is freed and the old one
// stays.
bool ShowFolder(FileChooser* chooser, char16_t* folder) {
    const bool listed = List(chooser, folder);
    MemFree(nullptr, listed ? chooser->folder : folder);
    if (listed) chooser->folder = folder;
    return listed;
}

char16_t* PathOf(const FileChooser& chooser, const char16_t* name) {
    char16_t* path = JoinPath(chooser.folder, name);
    TidyPath(path);
    return path;
}

bool MayOverwrite(const FileChooser& chooser) {
    return ShowMessage(chooser.window, LoadResString(IDS_OVERWRITE_QUESTION), LoadResString(IDS_CONFIRMATION),
                       MessageKind::kQuestionYesNo) == kAnswerYes;
}

void TellNotFound(const FileChooser& chooser) {
    ShowMessage(chooser.window, LoadResString(IDS_FILE_NOT_FOUND), LoadResString(IDS_ERROR),
                MessageKind::kError);
}

// Whether a path that is no folder's may be the result.
bool MayChoose(const FileChooser& chooser, PathKind kind) {
    if (kind == PathKind::kFile) return !chooser.saving || MayOverwrite(chooser);
    if (!chooser.saving) {
        TellNotFound(chooser);
        return false;
    }
    // Nothing of this name could be saved: told here, the name can still be mended.
    if (kind == PathKind::kUnusable) ReportLastError();
    return kind == PathKind::kMissing;
}

}  // namespace

bool BeginChoosing(FileChooser* chooser, const char16_t* initialPath, char16_t** name) {
    *name = nullptr;
    char16_t* folder = PathForPerson(initialPath != nullptr ? initialPath : u"");
    TidyPath(folder);
    const bool whole = Guarded([&] {
        if (KindOfPath(folder) == PathKind::kFolder) {
            *name = MemStrDup(nullptr, u"");
        } else {
            *name = MemStrDup(nullptr, LastPart(folder));
            GoUp(folder);
        }
    });
    if (!whole) {
        MemFree(nullptr, folder);
        return false;
    }
    return ShowFolder(chooser, folder);
}

void EndChoosing(FileChooser* chooser) {
    FreeListing(&chooser->listing);
    MemFree(nullptr, chooser->folder);
    chooser->folder = nullptr;
}

bool EnterEntry(FileChooser* chooser, uint32_t index) {
    return ShowFolder(chooser, PathOf(*chooser, chooser->listing.entries[index].name));
}

bool GoUpOneLevel(FileChooser* chooser) {
    char16_t* folder = MemStrDup(nullptr, chooser->folder);
    GoUp(folder);
    return ShowFolder(chooser, folder);
}

bool RefreshListing(FileChooser* chooser) { return List(chooser, chooser->folder); }

bool MakeFolder(FileChooser* chooser, const char16_t* name) {
    char16_t* path = PathOf(*chooser, name);
    const bool made = FolderCreate(path);
    if (!made) ReportLastError();
    MemFree(nullptr, path);
    return made && RefreshListing(chooser);
}

Acceptance AcceptName(FileChooser* chooser, const char16_t* name) {
    if (*name == 0) return Acceptance::kStay;
    char16_t* path = PathOf(*chooser, name);
    const PathKind kind = KindOfPath(path);
    if (kind == PathKind::kFolder)
        return ShowFolder(chooser, path) ? Acceptance::kEntered : Acceptance::kStay;
    const bool chosen = MayChoose(*chooser, kind);
    Guarded([&] {
        if (chosen) chooser->path = PathForFile(path);
    });
    MemFree(nullptr, path);
    return chooser->path != nullptr ? Acceptance::kChosen : Acceptance::kStay;
}

Acceptance AcceptEntry(FileChooser* chooser, uint32_t index) {
    chooser->codecIndex = chooser->firstCodec;
    return AcceptName(chooser, chooser->listing.entries[index].name);
}

}  // namespace nira
