#include "app/buffer_list.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/menu_text.h"
#include "base/utf16.h"
#include "engine/current_editor.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "files/load.h"
#include "files/recent_files.h"
#include "platform/menus.h"
#include "platform/surface.h"
#include "resources/resource.h"

namespace nira {

namespace {

constexpr size_t kNumberUnits = 7;            // digits of an untitled number and their terminator
constexpr size_t kSlotBytes = sizeof(void*);  // of the array of documents
constexpr uint32_t kModifiedUnits = 3;        // " *" and its terminator

MenuHandle BuffersPopup() { return BarPopup(TheAppState().menuBar, BARPOPUP_WINDOWS); }

uint32_t ItemId(int index) { return CMD_BUFFER_FIRST + static_cast<uint32_t>(index); }

// Where a document's item stands. The documents come last in the pop-up, and there are as many items as
// documents: AddBuffer sees to that.
uint32_t ItemPosition(MenuHandle popup, int index) {
    const uint32_t items = MenuItemCount(popup);
    const auto documents = static_cast<uint32_t>(TheAppState().bufferCount);
    return items - std::min(items, documents) + static_cast<uint32_t>(index);
}

void MarkInMenu(int index) {
    if (index < 0) return;
    const MenuHandle popup = BuffersPopup();
    const uint32_t first = ItemPosition(popup, 0);
    const auto last = static_cast<uint32_t>(TheAppState().bufferCount - 1);
    MenuCheckRadioAt(popup, first, first + last, first + static_cast<uint32_t>(index));
}

// Leaves the item as it is when memory ran out.
void SetItemText(MenuHandle popup, uint32_t position, const Editor* buffer) {
    char16_t* title = BufferTitle(buffer);
    if (title == nullptr) return;
    const size_t length = Utf16Length(title);
    char16_t* shown = nullptr;
    if (Guarded([&] { shown = MemAllocArray<char16_t>(nullptr, MenuTextUnits(length)); })) {
        CopyToMenuText(shown, title, length);
        MenuSetTextAt(popup, position, shown);
        MemFree(nullptr, shown);
    }
    MemFree(nullptr, title);
}

bool ResizeArray(int count) {
    AppState& app = TheAppState();
    const size_t bytes = static_cast<size_t>(count) * kSlotBytes;
    return Guarded([&] { app.buffers = static_cast<Editor**>(MemReAlloc(nullptr, app.buffers, bytes)); });
}

// Gives the room back that the documents in the list do not need. Cannot fail.
void TrimArray() {
    AppState& app = TheAppState();
    if (app.bufferCount == 0) {
        MemFree(nullptr, app.buffers);
        app.buffers = nullptr;
    } else {
        const size_t bytes = static_cast<size_t>(app.bufferCount) * kSlotBytes;
        app.buffers = static_cast<Editor**>(MemShrink(nullptr, app.buffers, bytes));
    }
}

void GiveUntitledNumber(Editor* buffer) {
    AppState& app = TheAppState();
    // Through unsigned arithmetic: the 32768th untitled document must not be undefined behaviour.
    app.untitledCounter = static_cast<int16_t>(static_cast<uint16_t>(app.untitledCounter) + 1u);
    buffer->path = nullptr;
    buffer->untitledNumber = static_cast<uintptr_t>(static_cast<intptr_t>(app.untitledCounter));
}

// A new text of at least `room` units that holds the document's name. Unwinds when memory runs out.
char16_t* CopyName(const Editor* buffer, size_t extraUnits) {
    if (buffer->path != nullptr) {
        const size_t units = Utf16Length(buffer->displayName) + 1 + extraUnits;
        char16_t* name = MemAllocArray<char16_t>(nullptr, units);
        Utf16Copy(name, units, buffer->displayName);
        return name;
    }
    const char16_t* untitled = LoadResString(IDS_UNTITLED);
    const size_t length = Utf16Length(untitled);
    char16_t* name = MemAllocArray<char16_t>(nullptr, length + kNumberUnits + extraUnits);
    Utf16Copy(name, length + 1, untitled);
    Utf16FromInt(name + length, kNumberUnits,
                 static_cast<int>(static_cast<intptr_t>(buffer->untitledNumber)));
    return name;
}

// A document that a file may take the place of. One whose save failed is not: its text exists nowhere else.
bool IsReplaceable(const Editor* buffer) {
    return buffer != nullptr && BufferIndex(buffer) >= 0 && buffer->path == nullptr &&
           buffer->modified == 0 && buffer->saveFailed == 0;
}

void ReplaceShown(Editor* fresh) {
    Editor* shown = TheWindowState().currentEditor;
    const int index = BufferIndex(shown);
    TheAppState().buffers[index] = fresh;
    ActivateBuffer(fresh);
    SetBufferMenuText(index, fresh);
    EditorDestroy(shown);
}

int ShowLoaded(Editor* fresh) {
    if (IsReplaceable(TheWindowState().currentEditor)) {
        ReplaceShown(fresh);
    } else if (AddBuffer(fresh, false) != 0) {
        ActivateBuffer(fresh);
    } else {
        EditorDestroy(fresh);
        return 0;
    }
    RemoveRecentFile(fresh->path);
    return 1;
}

}  // namespace

void NewBuffer() {
    Editor* buffer = EditorCreate();
    if (buffer == nullptr) return;
    if (AddBuffer(buffer, true) == 0) {
        EditorDestroy(buffer);
        return;
    }
    ActivateBuffer(buffer);
}

int OpenFileInBuffer(char16_t* path, uint32_t codecIndex) {
    ShowWaitPointer();
    int opened = 0;
    Editor* buffer = EditorCreate();
    if (buffer == nullptr) {
        MemFree(nullptr, path);
    } else if (Load(buffer, path, codecIndex) == 0) {
        EditorDestroy(buffer);
    } else {
        opened = ShowLoaded(buffer);
    }
    RestorePointer();
    return opened;
}

int AddBuffer(Editor* buffer, bool untitled) {
    AppState& app = TheAppState();
    if (app.bufferCount == INT16_MAX) return 0;
    const int count = app.bufferCount + 1;
    if (!ResizeArray(count)) return 0;
    if (!MenuAppendItem(BuffersPopup(), ItemId(count - 1), u"")) {
        TrimArray();
        return 0;
    }
    app.buffers[count - 1] = buffer;
    app.bufferCount = static_cast<int16_t>(count);
    if (untitled) GiveUntitledNumber(buffer);
    SetBufferMenuText(count - 1, buffer);
    MarkInMenu(count - 1);
    return 1;
}

void ActivateBuffer(Editor* buffer) {
    SetCurrentEditor(buffer);
    // By every road: a document that is shown must be the one with the mark, also after a close or an open.
    MarkInMenu(BufferIndex(buffer));
}

void ActivateBufferById(uint32_t id) {
    const AppState& app = TheAppState();
    if (id < CMD_BUFFER_FIRST || id - CMD_BUFFER_FIRST >= static_cast<uint32_t>(app.bufferCount)) return;
    ActivateBuffer(app.buffers[id - CMD_BUFFER_FIRST]);
}

void NextBuffer() {
    int next = BufferIndex(TheWindowState().currentEditor) + 1;
    if (next == TheAppState().bufferCount) next = 0;
    ActivateBufferById(ItemId(next));
}

int BufferIndex(const Editor* buffer) {
    const AppState& app = TheAppState();
    for (int i = 0; i < app.bufferCount; ++i) {
        if (app.buffers[i] == buffer) return i;
    }
    return -1;
}

char16_t* BufferName(const Editor* buffer) {
    char16_t* name = nullptr;
    Guarded([&] { name = CopyName(buffer, 0); });
    return name;
}

char16_t* BufferTitle(const Editor* buffer) {
    char16_t* title = nullptr;
    if (!Guarded([&] { title = CopyName(buffer, kModifiedUnits); })) return nullptr;
    if (buffer->modified != 0) Utf16Copy(title + Utf16Length(title), kModifiedUnits, u" *");
    return title;
}

void SetBufferMenuText(int index, const Editor* buffer) {
    const MenuHandle popup = BuffersPopup();
    SetItemText(popup, ItemPosition(popup, index), buffer);
}

void UpdateBufferMenuTexts() {
    const AppState& app = TheAppState();
    // Once for all: the bar is asked for its pop-up by a message, which takes longer than setting a text.
    const MenuHandle popup = BuffersPopup();
    const uint32_t first = ItemPosition(popup, 0);
    for (int i = 0; i < app.bufferCount; ++i) {
        SetItemText(popup, first + static_cast<uint32_t>(i), app.buffers[i]);
    }
}

void UpdateMainTitle() {
    const Editor* shown = TheWindowState().currentEditor;
    if (shown == nullptr) return;
    char16_t* title = BufferTitle(shown);
    if (title == nullptr) return;
    SurfaceSetTitle(TheAppState().mainWindow, title);
    MemFree(nullptr, title);
}

void RemoveBuffer(int index) {
    TakeBufferOut(index);
    RenumberBufferItems(index);
}

void TakeBufferOut(int index) {
    AppState& app = TheAppState();
    const MenuHandle popup = BuffersPopup();
    MenuDeletePosition(popup, ItemPosition(popup, index));
    std::copy(app.buffers + index + 1, app.buffers + app.bufferCount, app.buffers + index);
    --app.bufferCount;
    TrimArray();
}

void RenumberBufferItems(int index) {
    const MenuHandle popup = BuffersPopup();
    const int count = TheAppState().bufferCount;
    const uint32_t first = ItemPosition(popup, 0);
    for (int i = index; i < count; ++i) MenuSetIdAt(popup, first + static_cast<uint32_t>(i), ItemId(i));
}

}  // namespace nira
