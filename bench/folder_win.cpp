// Lists one folder as the file dialog does, sorted by name, and by the bare system calls; prints the median
// times of both in microseconds.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "files/folder_listing.h"
#include "platform/win32/casts.h"

namespace nira {

namespace {

constexpr int kRounds = 11;

template <typename Work>
double Microseconds(Work&& work) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&before);
    work();
    QueryPerformanceCounter(&after);
    return static_cast<double>(after.QuadPart - before.QuadPart) * 1e6 /
           static_cast<double>(frequency.QuadPart);
}

double Median(std::vector<double>* times) {
    std::nth_element(times->begin(), times->begin() + kRounds / 2, times->end());
    return (*times)[kRounds / 2];
}

void ListBare(const std::wstring& pattern) {
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(pattern.c_str(), &data);
    while (FindNextFileW(search, &data)) continue;
    FindClose(search);
}

int MeasureListing(const wchar_t* folder) {
    const std::wstring pattern = std::wstring(folder) + L"\\*";
    std::vector<double> ours;
    std::vector<double> bare;
    FolderListing listing = {};
    for (int i = 0; i < kRounds; ++i) {
        bare.push_back(Microseconds([&] { ListBare(pattern); }));
        ours.push_back(Microseconds([&] { ListFolder(&listing, FromWide(folder)); }));
    }
    if (listing.count < 10000) return 1;
    std::printf("%.1f %.1f\n", Median(&ours), Median(&bare));
    return 0;
}

}  // namespace

}  // namespace nira

int wmain(int argc, wchar_t** argv) { return argc == 2 ? nira::MeasureListing(argv[1]) : 1; }
