#include "files/load.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/utf16.h"
#include "engine/text.h"
#include "files/codecs.h"
#include "platform/files.h"
#include "resources/resource.h"

namespace nira {

namespace {

// A load under way. Everything in it but the document is released by EndLoading.
struct Loading {
    Editor* editor;
    Codec* codec;
    FileHandle file;
    uint8_t* block;     // the read buffer with as many zeroed bytes in front of it
    uint8_t* buffer;    // the read buffer, kReadBlock bytes
    uint32_t carry;     // bytes at its start that the codec has not taken yet
    int32_t chunk;      // the next chunk's flag
    char16_t* text;     // the codec's output buffer
    char16_t* widened;  // see SeparateFirstBreak
    char16_t* held;     // decoded and not yet in the document, see HoldBack
    uint32_t heldCount;
    bool endedWithCr;  // the last decoded unit so far was a CR
    bool readError;
};

// Where a second LF must become CR LF: behind a first break that is a lone LF TextInsert would swallow it.
// Returns its place, or `count` when there is none.
uint32_t FindSwallowedLf(const char16_t* text, uint32_t count) {
    for (uint32_t i = 0; i < count; ++i) {
        if (text[i] == kCarriageReturn) return count;
        if (text[i] == kLineFeed) return i + 1 < count && text[i + 1] == kLineFeed ? i + 1 : count;
    }
    return count;
}

// Puts a CR in front of the LF that would be swallowed, in a copy: the codec's buffer is left as it is,
// because a stream's odd last byte is completed from it.
const char16_t* SeparateFirstBreak(Loading* loading, const char16_t* text, uint32_t* count) {
    const uint32_t place = FindSwallowedLf(text, *count);
    if (place == *count) return text;
    const size_t bytes = (size_t{*count} + 1) * sizeof(char16_t);
    if (MemSize(nullptr, loading->widened) < bytes) {
        loading->widened = static_cast<char16_t*>(MemReAlloc(nullptr, loading->widened, bytes));
    }
    std::copy_n(text, place, loading->widened);
    loading->widened[place] = kCarriageReturn;
    std::copy_n(text + place, *count - place, loading->widened + place + 1);
    ++*count;
    return loading->widened;
}

// A file must not lose a piece unnoticed: the load ends where memory does.
void InsertAtEnd(Editor* editor, const char16_t* text, uint32_t count) {
    const uint32_t last = editor->lineCount - 1;
    if (TextInsert(editor, last, editor->lines[last].length, text, count) == kTextFailed) OutOfMemory(false);
}

void InsertHeld(Loading* loading) {
    if (loading->heldCount == 0) return;
    InsertAtEnd(loading->editor, loading->held, loading->heldCount);
    loading->heldCount = 0;
}

void Hold(Loading* loading, const char16_t* text, uint32_t count) {
    const size_t bytes = (size_t{loading->heldCount} + count) * sizeof(char16_t);
    if (MemSize(nullptr, loading->held) < bytes) {
        loading->held = static_cast<char16_t*>(MemReAlloc(nullptr, loading->held, bytes * 2));
    }
    std::copy_n(text, count, loading->held + loading->heldCount);
    loading->heldCount += count;
}

// Whether a piece should wait for those behind it. A line of a script whose glyphs depend on their neighbours
// is measured as a whole at each insertion, so a long one grows by as much as it has, not block by block.
bool HoldBack(const Loading& loading, const char16_t* text, uint32_t count) {
    const LineRecord& line = loading.editor->lines[loading.editor->lineCount - 1];
    return line.shaped != 0 && loading.heldCount + count < line.length &&
           std::none_of(text, text + count, [](char16_t unit) { return IsLineBreak(unit); });
}

// An LF at the start of this chunk belongs to a CR at the end of the one before.
void Append(Loading* loading, uint32_t units) {
    if (units == 0) return;
    const char16_t* text = loading->text;
    uint32_t count = units;
    const char16_t last = text[units - 1];
    if (loading->endedWithCr && text[0] == kLineFeed) {
        ++text;
        --count;
    }
    loading->endedWithCr = last == kCarriageReturn;
    text = SeparateFirstBreak(loading, text, &count);
    if (count == 0) return;
    const bool waits = HoldBack(*loading, text, count);
    if (!waits && loading->heldCount == 0) {
        InsertAtEnd(loading->editor, text, count);
        return;
    }
    Hold(loading, text, count);
    if (!waits) InsertHeld(loading);
}

// Decodes the first `total` bytes of the read buffer and appends their text. *rest becomes the bytes left
// over. False when the codec has failed.
bool DecodeChunk(Loading* loading, uint32_t total, int32_t chunk, uint32_t* rest) {
    uint32_t units = 0;
    const uint32_t consumed =
        CodecDecode(loading->codec, loading->buffer, total, &loading->text, &units, chunk);
    if (consumed == kCodecFailed) return false;
    Append(loading, units);
    *rest = total - std::min(consumed, total);
    return true;
}

// Moves what is left over to the start of the buffer. Its place is reckoned from the bytes of this read
// alone, as on every device this editor has run on: two of them must load the same file alike, down to what a
// sequence cut by two block ends in a row turns into. So the place may lie before the buffer, in the zeroed
// bytes there. Libraries are promised the very bytes that they left.
void KeepRest(Loading* loading, uint32_t bytesRead, uint32_t rest) {
    const uint32_t end = bytesRead + (IsPlugIn(loading->codec) ? loading->carry : 0);
    const ptrdiff_t from = static_cast<ptrdiff_t>(end) - static_cast<ptrdiff_t>(rest);
    if (rest > 0) std::memmove(loading->buffer, loading->buffer + from, rest);
    loading->carry = rest;
}

// Reads and decodes one block. False at the end of the file and at a read error.
bool LoadBlock(Loading* loading) {
    const uint32_t room = kReadBlock - loading->carry;
    uint32_t bytesRead = 0;
    uint32_t rest = 0;
    // A codec that takes nothing of a full buffer would read 0 bytes for ever, which is not the end of the
    // file.
    if (room == 0 || !FileRead(loading->file, loading->buffer + loading->carry, room, &bytesRead)) {
        loading->readError = true;
        return false;
    }
    if (bytesRead == 0) {
        loading->readError = !DecodeChunk(loading, loading->carry, kLastChunk, &rest);
        return false;
    }
    loading->readError = !DecodeChunk(loading, bytesRead + loading->carry, loading->chunk, &rest);
    if (loading->readError) return false;
    KeepRest(loading, bytesRead, rest);
    loading->chunk = kMiddleChunk;
    return true;
}

void LoadBlocks(Loading* loading) {
    loading->block = static_cast<uint8_t*>(MemAlloc(nullptr, size_t{kReadBlock} * 2));
    loading->buffer = loading->block + kReadBlock;
    loading->chunk = kFirstChunk;
    while (LoadBlock(loading)) continue;
    InsertHeld(loading);
}

void EndLoading(Loading* loading) {
    Editor* editor = loading->editor;
    editor->codecId = CodecCurrentIndex(loading->codec);
    if (!DestroyCodec(loading->codec)) loading->readError = true;
    MemFree(nullptr, loading->block);
    MemFree(nullptr, loading->text);
    MemFree(nullptr, loading->widened);
    MemFree(nullptr, loading->held);
    FileClose(loading->file);
    SetModified(editor, 0);
    editor->flags = 0;
}

// Tells the person why nothing was read.
int NotLoaded(Editor* editor, uint32_t message) {
    editor->flags = 0;
    ShowErrorMessage(message);
    return 0;
}

}  // namespace

int Load(Editor* editor, char16_t* path, uint32_t codecIndex) {
    SetEditorPath(editor, path);
    editor->flags = kFlagNoUndo | kFlagDetectLineEnd;
    Loading loading = {};
    loading.editor = editor;
    if (!Guarded([&] { loading.codec = CreateCodec(codecIndex); })) {
        editor->flags = 0;
        return 0;
    }
    if (loading.codec == nullptr) return NotLoaded(editor, IDS_ERROR_DECODER);
    loading.file = FileOpenForReading(path);
    if (loading.file == nullptr) {
        DestroyCodec(loading.codec);
        return NotLoaded(editor, IDS_ERROR_READING);
    }
    const bool enough = Guarded([&] { LoadBlocks(&loading); });
    EndLoading(&loading);
    if (!enough) return 0;
    if (loading.readError) ShowErrorMessage(IDS_ERROR_READING);
    return loading.readError ? 0 : 1;
}

}  // namespace nira
