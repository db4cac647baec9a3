#include "lumo/lv2/Lv2Log.h"

#include <lv2/log/log.h>

#include <cstdarg>

namespace lumo
{

void Lv2Log::set(const LV2_Log_Log* log, std::uint32_t error_type)
{
    _log = log != nullptr && log->vprintf != nullptr ? log : nullptr;
    _error_type = error_type;
}

void Lv2Log::error(const char* format, ...) const
{
    if (!is_open())
    {
        return;
    }
    va_list args;
    va_start(args, format);
    _log->vprintf(_log->handle, _error_type, format, args);
    va_end(args);
}

}  // namespace lumo
