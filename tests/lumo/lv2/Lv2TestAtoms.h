#pragma once

#include <lv2/atom/atom.h>
#include <lv2/urid/urid.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

// Test doubles of what an LV2 host provides: a URID map, and atom sequences
// laid out byte by byte as a host writes them, including what no host should.
namespace zq_test
{

class UridMap
{
public:
    UridMap() : _feature{this, &UridMap::map_uri} {}
    UridMap(const UridMap&) = delete;
    UridMap& operator=(const UridMap&) = delete;

    const LV2_URID_Map* use() const { return &_feature; }
    std::uint32_t id(const std::string& uri) { return map_uri(this, uri.c_str()); }

private:
    static LV2_URID map_uri(LV2_URID_Map_Handle handle, const char* uri)
    {
        auto& ids = static_cast<UridMap*>(handle)->_ids;
        const auto found = ids.find(uri);
        return found != ids.end() ? found->second : ids[uri] = static_cast<LV2_URID>(ids.size() + 1);
    }

    LV2_URID_Map _feature;
    std::map<std::string, LV2_URID> _ids;
};

class SequenceBytes
{
public:
    explicit SequenceBytes(std::uint32_t sequence_type, std::uint32_t unit = 0)
    {
        const LV2_Atom_Sequence head{{sizeof(LV2_Atom_Sequence_Body), sequence_type}, {unit, 0}};
        append(&head, sizeof(head));
    }

    // One event; declared_size is what its header claims (the body's size unless given).
    SequenceBytes& event(std::int64_t frame, std::uint32_t type, const std::vector<std::uint8_t>& body,
                         std::int64_t declared_size = -1)
    {
        LV2_Atom_Event header{};
        header.time.frames = frame;
        header.body.type = type;
        header.body.size = static_cast<std::uint32_t>(declared_size < 0 ? body.size() : declared_size);
        append(&header, sizeof(header));
        append(body.data(), body.size());
        _bytes.resize((_bytes.size() + 7) & ~std::size_t{7}, 0);
        return *this;
    }

    // The sequence with its size set to what was appended.
    const LV2_Atom_Sequence* get()
    {
        _words.assign((_bytes.size() + 7) / 8, 0);
        std::memcpy(_words.data(), _bytes.data(), _bytes.size());
        auto* seq = reinterpret_cast<LV2_Atom_Sequence*>(_words.data());
        seq->atom.size = static_cast<std::uint32_t>(_bytes.size() - sizeof(LV2_Atom));
        return seq;
    }

private:
    void append(const void* data, std::size_t size)
    {
        const auto* p = static_cast<const std::uint8_t*>(data);
        _bytes.insert(_bytes.end(), p, p + size);
    }

    std::vector<std::uint8_t> _bytes;
    std::vector<std::uint64_t> _words;
};

// The body of an atom object: its id and type, then key and value of each
// property, padded as the host pads them.
class ObjectBytes
{
public:
    explicit ObjectBytes(std::uint32_t object_type)
    {
        const LV2_Atom_Object_Body head{0, object_type};
        append(&head, sizeof(head));
    }
    template <class T>
    ObjectBytes& property(std::uint32_t key, std::uint32_t type, T value)
    {
        const LV2_Atom_Property_Body head{key, 0, {sizeof(T), type}};
        append(&head, sizeof(head));
        append(&value, sizeof(value));
        bytes.resize((bytes.size() + 7) & ~std::size_t{7}, 0);
        return *this;
    }

    std::vector<std::uint8_t> bytes;

private:
    void append(const void* data, std::size_t size)
    {
        const auto* p = static_cast<const std::uint8_t*>(data);
        bytes.insert(bytes.end(), p, p + size);
    }
};

}  // namespace zq_test
