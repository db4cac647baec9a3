#include "EditLog.h"

namespace vsthost
{

void EditLog::add(lumo::vst2::HostOp op, int index, float value)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _entries.push_back(Entry{op, index, value});
}

std::vector<EditLog::Entry> EditLog::get_entries() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _entries;
}

void EditLog::print(std::ostream& out) const
{
    using lumo::vst2::HostOp;
    const std::vector<Entry> entries = get_entries();
    out << "edits seen by the host: " << entries.size() << "\n";
    for (std::size_t i = 0; i < entries.size(); ++i)
    {
        const Entry& e = entries[i];
        if (e.op != HostOp::automate)
        {
            out << "  " << (e.op == HostOp::begin_edit ? "begin edit " : "end edit ") << e.index << "\n";
            continue;
        }
        std::size_t last = i;
        while (last + 1 < entries.size() && entries[last + 1].op == HostOp::automate &&
               entries[last + 1].index == e.index)
        {
            ++last;
        }
        const std::size_t count = last - i + 1;
        out << "  automate " << e.index << ": " << count << (count == 1 ? " time" : " times") << ", last "
            << entries[last].value << "\n";
        i = last;
    }
}

}  // namespace vsthost
