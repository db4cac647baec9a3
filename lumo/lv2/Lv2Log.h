#pragma once

#include <lv2/log/log.h>

#include <cstdint>

namespace lumo
{

// Messages for the user through the host's log, when the host offers one;
// without it they go nowhere (a plug-in has no console of its own).
class Lv2Log
{
public:
    void set(const LV2_Log_Log* log, std::uint32_t error_type);
    bool is_open() const { return _log != nullptr && _error_type != 0; }

    // One line, formatted as printf does; the host adds no line feed.
    void error(const char* format, ...) const __attribute__((format(printf, 2, 3)));

private:
    const LV2_Log_Log* _log = nullptr;
    std::uint32_t _error_type = 0;
};

}  // namespace lumo
