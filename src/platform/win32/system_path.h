// The path that the system's file calls take, made from the path that the program uses.
#pragma once

namespace nira {

// Maps a path with one leading backslash into the home folder, lifts the system's limits of 247 and 259 units
// from absolute paths, reaches an existing file whose name the system would change, and refuses devices: a
// text saved to `NUL` would be lost. Lives as long as the call it is made for.
class SystemPath {
  public:
    explicit SystemPath(const char16_t* path);
    ~SystemPath();
    SystemPath(const SystemPath&) = delete;
    SystemPath& operator=(const SystemPath&) = delete;

    // Null, with the last error set, when memory is short, the path was null or names a device.
    const wchar_t* Get() const { return path_; }

  private:
    // Where the system would change the name: the exact path, or none at all for a device.
    void KeepName();

    wchar_t* path_;
};

}  // namespace nira
