#include "app/buffer_saving.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/buffer_list.h"
#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/utf16.h"
#include "engine/current_editor.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "files/file_dialogs.h"
#include "files/folder_paths.h"
#include "files/recent_files.h"
#include "files/save.h"
#include "platform/folders.h"
#include "platform/messages.h"
#include "resources/resource.h"

namespace nira {

namespace {

bool HasUnsavedText(const Editor* buffer) { return buffer->modified != 0 || buffer->saveFailed != 0; }

// `format` with its first "%s" replaced by `name`; unwinds when memory runs out. Done by hand: a file name
// may hold percent signs of its own.
char16_t* FormatName(const char16_t* format, const char16_t* name) {
    const char16_t* mark = Utf16Find(format, u'%');
    const size_t head = mark != nullptr ? static_cast<size_t>(mark - format) : Utf16Length(format);
    const size_t nameUnits = Utf16Length(name);
    const size_t units = Utf16Length(format) + nameUnits + 1;
    char16_t* text = MemAllocArray<char16_t>(nullptr, units);
    Utf16Copy(text, head + 1, format);
    if (mark == nullptr) return text;
    Utf16Copy(text + head, nameUnits + 1, name);
    Utf16Copy(text + head + nameUnits, units - head - nameUnits, mark + 2);
    return text;
}

char16_t* SaveQuestion(const Editor* buffer) {
    char16_t* name = BufferName(buffer);
    if (name == nullptr) return nullptr;
    char16_t* question = nullptr;
    Guarded([&] { question = FormatName(LoadResString(IDS_SAVE_CHANGES_QUESTION), name); });
    MemFree(nullptr, name);
    return question;
}

// The dialog ends at once when it cannot list its first folder.
bool FolderCanBeListed(const char16_t* path) {
    char16_t* folder = PathForPerson(path);
    TidyPath(folder);
    GoUp(folder);
    const FolderSearch search = FolderSearchOpen(folder);
    FolderSearchClose(search);
    MemFree(nullptr, folder);
    return search != nullptr;
}

// The path that Save As proposes: the document's own, or its name in the root folder. The latter also when
// the document's folder is gone or locked: its text must have a way to another place. Unwinds.
char16_t* SuggestedPath(const Editor* buffer) {
    if (buffer->path != nullptr && FolderCanBeListed(buffer->path)) return MemStrDup(nullptr, buffer->path);
    char16_t* name = BufferName(buffer);
    if (name == nullptr) OutOfMemory(false);
    char16_t* path = nullptr;
    const bool built = Guarded([&] {
        path = MemStrDup(nullptr, u"\\");
        path = MemStrCat(path, name);
    });
    MemFree(nullptr, name);
    if (built) return path;
    MemFree(nullptr, path);
    OutOfMemory(false);
}

// Saves and tells whether the text is in its file now.
bool SaveForClosing(Editor* buffer) {
    return (buffer->path == nullptr ? SaveBufferAs(buffer) : Save(buffer)) != 0;
}

bool MayClose(Editor* buffer) {
    if (!HasUnsavedText(buffer)) return true;
    if (buffer != TheWindowState().currentEditor) ActivateBuffer(buffer);
    const int answer = PromptSaveChanges(buffer);
    if (answer == kAnswerCancel) return false;
    return answer != kAnswerYes || SaveForClosing(buffer);
}

void NoteAsRecent(const Editor* buffer) {
    if (buffer->path != nullptr) AddRecentFile(buffer->path, buffer->codecId);
}

// Closes one of many. Nothing is shown behind it, and the items behind it keep their identifiers: with
// thousands of documents, painting each and walking through all items for each is what takes the time.
bool CloseWithoutSuccessor(int index) {
    Editor* buffer = TheAppState().buffers[index];
    if (!MayClose(buffer)) return false;
    NoteAsRecent(buffer);
    SetCurrentEditor(nullptr);
    TakeBufferOut(index);
    EditorDestroy(buffer);
    return true;
}

}  // namespace

int PromptSaveChanges(const Editor* buffer) {
    char16_t* question = SaveQuestion(buffer);
    if (question == nullptr) return kAnswerCancel;
    const int answer = ShowMessage(TheAppState().mainWindow, question, LoadResString(IDS_FILE_MODIFIED),
                                   MessageKind::kQuestionYesNoCancel);
    MemFree(nullptr, question);
    return answer;
}

int SaveActiveBuffer() {
    Editor* shown = TheWindowState().currentEditor;
    if (shown == nullptr) return 0;
    if (shown->path == nullptr) return SaveBufferAs(shown);
    Save(shown);
    return 1;
}

int SaveBufferAs(Editor* buffer) {
    char16_t* suggested = nullptr;
    if (!Guarded([&] { suggested = SuggestedPath(buffer); })) return 0;
    uint32_t codecIndex = buffer->codecId;
    uint32_t lineEnd = buffer->lineEnd;
    char16_t* path = SaveDialog(suggested, &codecIndex, &lineEnd);
    MemFree(nullptr, suggested);
    if (path == nullptr || SaveAs(buffer, path, codecIndex, lineEnd) == 0) return 0;
    SetBufferMenuText(BufferIndex(buffer), buffer);
    return 1;
}

void SaveAll() {
    const AppState& app = TheAppState();
    for (int i = 0; i < app.bufferCount; ++i) {
        Editor* buffer = app.buffers[i];
        if (buffer->path != nullptr) {
            Save(buffer);
        } else if (HasUnsavedText(buffer) && SaveBufferAs(buffer) == 0) {
            break;
        }
    }
}

int CloseBuffer(int index, bool exiting) {
    AppState& app = TheAppState();
    if (index < 0 || index >= app.bufferCount) return 0;
    Editor* buffer = app.buffers[index];
    if (!MayClose(buffer)) return 0;
    NoteAsRecent(buffer);
    RemoveBuffer(index);
    if (app.bufferCount > 0) {
        ActivateBuffer(app.buffers[0]);
    } else {
        SetCurrentEditor(nullptr);
    }
    // Before a new one is made: the memory of a huge document may be what the new one needs.
    EditorDestroy(buffer);
    if (app.bufferCount == 0 && !exiting) NewBuffer();
    return 1;
}

int CloseAllBuffers(bool exiting) {
    const AppState& app = TheAppState();
    if (app.bufferCount == 0) return 1;
    bool closed = true;
    while (closed && app.bufferCount > 0) {
        const int shown = BufferIndex(TheWindowState().currentEditor);
        closed = CloseWithoutSuccessor(std::max(shown, 0));
    }
    RenumberBufferItems(0);
    if (app.bufferCount == 0 && !exiting) NewBuffer();
    return closed ? 1 : 0;
}

}  // namespace nira
