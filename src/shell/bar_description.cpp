#include "shell/bar_description.h"

namespace shell {

namespace {

constexpr size_t kNumberSize = 2;
constexpr size_t kHeaderSize = 2 * kNumberSize;
constexpr size_t kNumbersPerButton = 7;
constexpr size_t kButtonSize = kNumbersPerButton * kNumberSize;

constexpr int kEnabledState = 4;
constexpr int kSeparatorStyle = 1;
constexpr int kDropDownStyle = 8;

int NumberAt(const unsigned char* bytes, size_t index) {
    const int value = bytes[index * kNumberSize] | bytes[index * kNumberSize + 1] << 8;
    return value >= 0x8000 ? value - 0x10000 : value;
}

UINT UnsignedNumberAt(const unsigned char* bytes, size_t index) {
    return static_cast<UINT>(NumberAt(bytes, index)) & 0xFFFF;
}

}  // namespace

bool ReadBarDescription(const void* bytes, size_t byteCount, BarDescription* description) {
    const unsigned char* start = static_cast<const unsigned char*>(bytes);
    if (start && byteCount >= kHeaderSize) {
        description->menuId = NumberAt(start, 0);
        description->buttonCount = NumberAt(start, 1);
        description->records = start + kHeaderSize;
        const size_t room = (byteCount - kHeaderSize) / kButtonSize;
        if (description->buttonCount >= 0 && static_cast<size_t>(description->buttonCount) <= room) {
            return true;
        }
    }
    SetLastError(ERROR_INVALID_DATA);
    return false;
}

BarButton DescribedButton(const BarDescription& description, int index) {
    const unsigned char* record = description.records + static_cast<size_t>(index) * kButtonSize;
    const int style = NumberAt(record, 3);
    BarButton button = {};
    button.image = NumberAt(record, 0);
    button.command = UnsignedNumberAt(record, 1);
    button.enabled = (NumberAt(record, 2) & kEnabledState) != 0;
    button.separator = style == kSeparatorStyle;
    button.dropDown = !button.separator && (style & kDropDownStyle) != 0;
    button.label = UnsignedNumberAt(record, 4);
    button.tooltip = UnsignedNumberAt(record, 5);
    button.popup = NumberAt(record, 6);
    // Separators and the words of text buttons and drop-downs stand alone.
    if (button.separator || button.dropDown) {
        button.image = -1;
    }
    return button;
}

}  // namespace shell
