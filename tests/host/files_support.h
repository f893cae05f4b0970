// What the tests of files, codecs and settings share: a folder of their own on the real disk, bytes in and
// out of it, and a look at everything that must be given back.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "app/services/memory.h"
#include "files/codecs.h"
#include "platform/host/faults.h"
#include "platform/host/heap_count.h"
#include "platform/host/message_log.h"
#include "platform/host/open_files.h"
#include "platform/host/registry_memory.h"
#include "platform/host/shell_log.h"
#include "settings/options.h"

namespace nira {

inline std::u16string Wide(const std::string& ascii) { return std::u16string(ascii.begin(), ascii.end()); }

// A new empty folder, removed with everything in it.
class TempFolder {
  public:
    TempFolder() {
        char name[] = "/tmp/nira-test-XXXXXX";
        folder_ = mkdtemp(name);
    }
    ~TempFolder() {
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
        std::filesystem::remove_all(folder_);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const { return folder_; }
    std::filesystem::path File(const std::string& name) const { return folder_ / name; }

    // The name as the program knows it, with backslashes.
    std::u16string Name(const std::string& name) const {
        std::u16string text = Wide(File(name).string());
        for (char16_t& unit : text) unit = unit == u'/' ? u'\\' : unit;
        return text;
    }
    // The same as a block of the local heap.
    char16_t* OwnName(const std::string& name) const { return MemStrDup(nullptr, Name(name).c_str()); }

    void Put(const std::string& name, const std::string& bytes) const {
        std::ofstream(File(name), std::ios::binary) << bytes;
    }
    std::string Get(const std::string& name) const {
        std::ifstream file(File(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    bool Has(const std::string& name) const { return std::filesystem::exists(File(name)); }
    size_t Count() const {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder_), {}));
    }

  private:
    std::filesystem::path folder_;
};

// A fresh registry, message log and fault plan; afterwards nothing may be left on the local heap, no registry
// key and no file open.
class ServicesTest : public testing::Test {
  protected:
    ServicesTest() {
        FaultResetAll();
        RegistryMemoryReset();
        MessageLogReset();
        HostShellLogReset();
        TheOptions() = {};
        blocks_ = HostHeapLiveBlocks(nullptr);
    }
    ~ServicesTest() override {
        FaultResetAll();
        FreeCodecs();
        TheOptions() = {};
        EXPECT_EQ(HostHeapLiveBlocks(nullptr), blocks_) << "blocks left on the local heap";
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
        EXPECT_EQ(HostOpenFileCount(), 0u);
        RegistryMemoryReset();
    }

  private:
    size_t blocks_;
};

}  // namespace nira
