#include "files/save.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/utf16.h"
#include "engine/text.h"
#include "files/codecs.h"
#include "platform/files.h"
#include "resources/resource.h"
#include "settings/options.h"

namespace nira {

namespace {

constexpr uint32_t kLinesPerBlock = 100;

// A save under way.
struct Saving {
    Editor* editor;
    Codec* codec;
    FileHandle file;   // null while the codec is tried out
    char16_t* backup;  // room for the backup's name; null unless the old file is to be kept aside
    bool setAside;     // the old file stands under the backup's name
    char16_t* text;    // the block being written
    uint8_t* bytes;    // the codec's output buffer
    bool mixedUp;      // a short write has put bytes where they do not belong
};

// A short write is followed by one from the start of the block again, for as many bytes as were missing. So
// the file is not what it should be, and the save has failed in the end; the blocks behind are written all
// the same, because where no backup is kept the file then still holds nearly all of the text.
bool WriteBytes(Saving* saving, uint32_t size) {
    uint32_t left = saving->file != nullptr ? size : 0;
    while (left > 0) {
        uint32_t written = 0;
        // A disk that takes nothing and calls it success would be asked for ever.
        if (!FileWrite(saving->file, saving->bytes, left, &written) || written == 0) return false;
        left -= std::min(written, left);
        if (left > 0) saving->mixedUp = true;
    }
    return true;
}

bool WriteRange(Saving* saving, uint32_t line1, uint32_t line2, uint32_t column2, int32_t chunk) {
    uint32_t units = 0;
    saving->text =
        TextCopyRange(saving->editor, nullptr, saving->editor->lineEnd, line1, 0, line2, column2, &units);
    uint32_t size = 0;
    const bool encoded = CodecEncode(saving->codec, saving->text, units, &saving->bytes, &size, chunk);
    const bool written = encoded && WriteBytes(saving, size);
    MemFree(nullptr, saving->text);
    saving->text = nullptr;
    return written;
}

// All lines but the last in blocks, each line with its line end, then the last line alone: the file ends
// where the text ends.
bool WriteText(Saving* saving) {
    const uint32_t count = saving->editor->lineCount;
    for (uint32_t first = 0; first < count; first += kLinesPerBlock) {
        const uint32_t last = std::min(first + kLinesPerBlock, count - 1);
        if (!WriteRange(saving, first, last, 0, first == 0 ? kFirstChunk : kMiddleChunk)) return false;
    }
    return WriteRange(saving, count - 1, count - 1, saving->editor->lines[count - 1].length, kLastChunk);
}

// Everything that needs memory before a file is touched. May leave `codec` null.
void Prepare(Saving* saving) {
    saving->codec = CreateCodec(saving->editor->codecId);
    const char16_t* path = saving->editor->path;
    if (saving->codec == nullptr || TheOptions().safeSave == 0 || !FileExists(path)) return;
    const size_t length = Utf16Length(path);
    saving->backup = MemAllocArray<char16_t>(nullptr, length + 2);
    std::copy_n(path, length, saving->backup);
}

void ReleaseCodec(Saving* saving) {
    DestroyCodec(saving->codec);
    saving->codec = nullptr;
    MemFree(nullptr, saving->text);
    saving->text = nullptr;
    MemFree(nullptr, saving->bytes);
    saving->bytes = nullptr;
}

// Without a backup, creating the file is the end of the old text; so a plug-in, which may break off anywhere,
// first has to get through the whole text with nothing written. A new codec then writes.
bool TryOut(Saving* saving) {
    if (!IsPlugIn(saving->codec) || saving->backup != nullptr || !FileExists(saving->editor->path))
        return true;
    bool encoded = false;
    const bool enough = Guarded([&] { encoded = WriteText(saving); });
    const bool worked = DestroyCodec(saving->codec) && encoded;
    saving->codec = nullptr;
    ReleaseCodec(saving);
    if (!enough) OutOfMemory(false);
    if (worked) saving->codec = CreateCodec(saving->editor->codecId);
    return saving->codec != nullptr;
}

// Renames the old file to the first backup name that works. What may not be overwritten may not be replaced
// in this way either: a read-only file would come back writable, its backup could not be deleted.
bool SetAside(Saving* saving) {
    if (FileIsProtected(saving->editor->path)) return false;
    char16_t* digit = saving->backup + Utf16Length(saving->editor->path);
    for (char16_t name = u'0'; name <= u'9' && !saving->setAside; ++name) {
        *digit = name;
        saving->setAside = FileMove(saving->editor->path, saving->backup);
    }
    return saving->setAside;
}

// Opens the file, with the old one out of the way. False leaves a backup that was made where it is.
bool Open(Saving* saving) {
    if (saving->backup != nullptr && !SetAside(saving)) return false;
    saving->file = FileCreateForWriting(saving->editor->path);
    if (saving->file != nullptr && saving->setAside) FileCopyHidden(saving->backup, saving->editor->path);
    return saving->file != nullptr;
}

bool Write(Saving* saving) {
    bool written = false;
    const bool enough = Guarded([&] { written = WriteText(saving); });
    bool whole = enough && written && !saving->mixedUp;
    // A plug-in that fails in the end may have failed before: what it gave is not kept.
    if (!DestroyCodec(saving->codec)) whole = false;
    saving->codec = nullptr;
    // The backup is deleted next; what stands in for it must be on the disk by then, not on its way there.
    if (whole && saving->setAside) whole = FileFlush(saving->file);
    if (!FileClose(saving->file)) whole = false;
    SetModified(saving->editor, 0);
    return whole;
}

// When the partial file cannot be deleted, or the old one not renamed, the backup stays.
void EndBackup(Saving* saving, bool saved) {
    if (!saving->setAside) return;
    if (saved) {
        FileDelete(saving->backup);
        return;
    }
    FileDelete(saving->editor->path);
    FileMove(saving->backup, saving->editor->path);
}

void Release(Saving* saving) {
    ReleaseCodec(saving);
    MemFree(nullptr, saving->backup);
}

// Saves as far as it goes. *message becomes what the person must be told, 0 for nothing.
bool SaveQuietly(Saving* saving, uint32_t* message) {
    *message = 0;
    if (!Guarded([&] { Prepare(saving); })) return false;
    *message = IDS_ERROR_ENCODER;
    if (saving->codec == nullptr) return false;
    bool usable = false;
    *message = 0;
    if (!Guarded([&] { usable = TryOut(saving); })) return false;
    *message = IDS_ERROR_WRITING;
    if (!usable || !Open(saving)) return false;
    const bool saved = Write(saving);
    EndBackup(saving, saved);
    if (saved) *message = 0;
    return saved;
}

// A null path is that of an untitled document, which has its number back.
void RestoreName(Editor* editor, char16_t* path, uintptr_t number) {
    if (path != nullptr) {
        SetEditorPath(editor, path);
    } else {
        editor->path = nullptr;
        editor->untitledNumber = number;
    }
}

}  // namespace

int Save(Editor* editor) {
    Saving saving = {};
    saving.editor = editor;
    uint32_t message = 0;
    const bool saved = SaveQuietly(&saving, &message);
    Release(&saving);
    editor->saveFailed = saved ? 0 : 1;
    if (saved) UndoMarkAllModified(editor->undo);
    if (message != 0) ShowErrorMessage(message);
    return saved ? 1 : 0;
}

int SaveAs(Editor* editor, char16_t* path, uint32_t codecIndex, uint32_t lineEnd) {
    char16_t* const oldPath = editor->path;
    const uintptr_t oldNumber = oldPath == nullptr ? editor->untitledNumber : 0;
    const uint32_t oldCodec = editor->codecId;
    const uint32_t oldLineEnd = editor->lineEnd;
    SetEditorPath(editor, path);
    editor->codecId = codecIndex;
    editor->lineEnd = lineEnd;
    const int saved = Save(editor);
    if (saved != 0) {
        MemFree(nullptr, oldPath);
    } else {
        MemFree(nullptr, path);
        editor->codecId = oldCodec;
        editor->lineEnd = oldLineEnd;
        RestoreName(editor, oldPath, oldNumber);
    }
    // Also after a failure: the flag was cleared under the new name, and the title has shown it since.
    if (TheEditorEvents().titleChanged != nullptr) TheEditorEvents().titleChanged();
    return saved;
}

}  // namespace nira
