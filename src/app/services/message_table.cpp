#include "app/services/message_table.h"

namespace nira {

const MessageEntry* FindMessage(const MessageTable& table, uint32_t identifier) {
    for (size_t i = 0; i < table.count; ++i) {
        if (table.entries[i].identifier == identifier) return &table.entries[i];
    }
    return nullptr;
}

}  // namespace nira
