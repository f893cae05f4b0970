// The application without its windows: a main window and a menu bar of the host, and files in a folder of the
// test's.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "app/buffer_list.h"
#include "app/buffer_saving.h"
#include "app/menu_state.h"
#include "app/services/memory.h"
#include "app_stand_ins.h"
#include "engine/current_editor.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "files/codecs.h"
#include "files/recent_files.h"
#include "platform/host/faults.h"
#include "platform/host/heap_count.h"
#include "platform/host/menu_state.h"
#include "platform/host/message_log.h"
#include "platform/host/registry_memory.h"
#include "platform/host/surface_state.h"
#include "resources/resource.h"
#include "search/search_state.h"
#include "settings/options_store.h"
#include "view/editing.h"
#include "view/fonts.h"

namespace nira {

class AppTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ForgetTheHost();
        blocksBefore_ = HostHeapLiveBlocks(nullptr);
        heapsBefore_ = HostHeapCount();
        char name[] = "/tmp/nira-app-XXXXXX";
        folder_ = mkdtemp(name);
        AppState& app = TheAppState();
        app = {};
        app.mainWindow = &mainWindow_;
        app.menuBar = &menuBar_;
        HostBarSetPopup(&menuBar_, BARPOPUP_WINDOWS, &popup_);
        TheWindowState() = {};
        editorWindow_.client = {400, 300};
        TheWindowState().editorWindow = &editorWindow_;
        TheWindowState().clientWidth = 400;
        ConnectEvents();
        ASSERT_EQ(InitCodecs(), 1);
        ASSERT_EQ(InitFonts(&mainWindow_), 1);
        ASSERT_EQ(LoadOptions(), 1);
        InitRecentFiles(&recent_);
    }

    void TearDown() override {
        FaultResetAll();
        while (TheAppState().bufferCount > 0) DropLast();
        TheEditorEvents() = {};
        TheWindowState() = {};
        ShutdownFonts();
        FreeOptions();
        FreeCodecs();
        FreeSearchState();
        TheAppState() = {};
        EXPECT_EQ(HostHeapCount(), heapsBefore_) << "a document was not destroyed";
        EXPECT_EQ(HostHeapLiveBlocks(nullptr), blocksBefore_) << "a block was not freed";
        std::filesystem::remove_all(folder_);
    }

    // A file of the test's folder as the program names it.
    std::u16string PathOf(const std::string& name) const {
        const std::string path = folder_ + "/" + name;
        std::u16string wide(path.begin(), path.end());
        for (char16_t& unit : wide) {
            if (unit == u'/') unit = u'\\';
        }
        return wide;
    }

    void WriteFile(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder_ + "/" + name, std::ios::binary) << bytes;
    }

    std::string ReadFile(const std::string& name) const {
        std::ifstream file(folder_ + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    int Open(const std::string& name) const {
        return OpenFileInBuffer(MemStrDup(nullptr, PathOf(name).c_str()), kCodecAnsi);
    }

    static Editor* Shown() { return TheWindowState().currentEditor; }
    static Editor* BufferAt(int index) { return TheAppState().buffers[index]; }
    static int BufferCount() { return TheAppState().bufferCount; }
    static void Type(const char16_t* text) {
        for (; *text != 0; ++text) TypeChar(Shown(), *text);
    }

    std::u16string Caption() const { return mainWindow_.title; }

    std::vector<std::u16string> MenuTexts() {
        UpdateBufferMenuTexts();
        std::vector<std::u16string> texts;
        for (const MenuItem& item : popup_.items) texts.push_back(item.text);
        return texts;
    }

    // The list and its mirror say the same, and what is shown is in the list and carries the only mark.
    void CheckList() const {
        const AppState& app = TheAppState();
        ASSERT_EQ(popup_.items.size(), static_cast<size_t>(app.bufferCount));
        EXPECT_GE(MemSize(nullptr, app.buffers), static_cast<size_t>(app.bufferCount) * sizeof(void*));
        const int shown = Shown() != nullptr ? BufferIndex(Shown()) : -1;
        EXPECT_TRUE(Shown() == nullptr || shown >= 0);
        for (int i = 0; i < app.bufferCount; ++i) {
            const MenuItem& item = popup_.items[static_cast<size_t>(i)];
            EXPECT_EQ(item.id, static_cast<uint32_t>(CMD_BUFFER_FIRST + i));
            EXPECT_EQ(item.marked, i == shown) << i;
        }
    }

    static void ForgetTheHost() {
        FaultResetAll();
        MessageLogReset();
        RegistryMemoryReset();
        HostBarsReset();
        HostSurfaceReset();
        TheStandIns() = {};
    }

    static void ConnectEvents() {
        EditorEvents& events = TheEditorEvents();
        events = {};
        events.titleChanged = UpdateMainTitle;
        events.undoStateChanged = UpdateUndoButtons;
        events.selectionChanged = [](Editor*) { UpdateClipboardButtons(); };
    }

    // From the end, so that no item behind it must move.
    static void DropLast() {
        Editor* buffer = BufferAt(BufferCount() - 1);
        RemoveBuffer(BufferCount() - 1);
        SetCurrentEditor(nullptr);
        EditorDestroy(buffer);
    }

    std::string folder_;
    WindowTag mainWindow_;
    WindowTag menuBar_;
    WindowTag editorWindow_;
    MenuTag popup_;
    MenuTag recent_;
    size_t blocksBefore_ = 0;
    size_t heapsBefore_ = 0;
};

}  // namespace nira
