// The path that the system's file calls take, made from the path that the program uses.
#pragma once

namespace nira {

// Maps a path with one leading backslash into the home folder, and lifts the system's limit of 259 units from
// absolute paths. Lives as long as the call it is made for.
class SystemPath {
  public:
    explicit SystemPath(const char16_t* path);
    ~SystemPath();
    SystemPath(const SystemPath&) = delete;
    SystemPath& operator=(const SystemPath&) = delete;

    // Null, with the last error set, when memory is short or the path was null.
    const wchar_t* Get() const { return path_; }

  private:
    wchar_t* path_;
};

}  // namespace nira
