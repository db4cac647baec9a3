#pragma once

#include <lv2/atom/atom.h>
#include <lv2/urid/urid.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

// Test doubles of what an LV2 host provides: a URID map, and atoms laid out
// byte by byte as a host writes them, including what no host should.
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

// Bytes that grow in 8-byte steps, as atoms are padded.
class AtomBytes
{
public:
    std::vector<std::uint8_t> bytes;

protected:
    // The head of the atom.
    template <class Head>
    explicit AtomBytes(const Head& head)
        : bytes(reinterpret_cast<const std::uint8_t*>(&head), reinterpret_cast<const std::uint8_t*>(&head + 1))
    {
    }
    void append(const void* data, std::size_t size, bool pad = false)
    {
        const std::size_t at = bytes.size();
        bytes.resize(pad ? (at + size + 7) & ~std::size_t{7} : at + size, 0);
        if (size > 0)
        {
            std::memcpy(bytes.data() + at, data, size);
        }
    }
};

class SequenceBytes : public AtomBytes
{
public:
    explicit SequenceBytes(std::uint32_t sequence_type, std::uint32_t unit = 0)
        : AtomBytes(LV2_Atom_Sequence{{sizeof(LV2_Atom_Sequence_Body), sequence_type}, {unit, 0}})
    {
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
        append(body.data(), body.size(), true);
        return *this;
    }
    // One event carrying a whole atom (its header and the body behind it).
    SequenceBytes& atom(std::int64_t frame, const LV2_Atom& atom)
    {
        const auto* body = reinterpret_cast<const std::uint8_t*>(&atom + 1);
        return event(frame, atom.type, std::vector<std::uint8_t>(body, body + atom.size));
    }

    // The sequence with its size set to what was appended.
    const LV2_Atom_Sequence* get()
    {
        _words.assign((bytes.size() + 7) / 8, 0);
        std::memcpy(_words.data(), bytes.data(), bytes.size());
        auto* seq = reinterpret_cast<LV2_Atom_Sequence*>(_words.data());
        seq->atom.size = static_cast<std::uint32_t>(bytes.size() - sizeof(LV2_Atom));
        return seq;
    }

private:
    std::vector<std::uint64_t> _words;
};

// The body of an atom object: its id and type, then key and value of each property.
class ObjectBytes : public AtomBytes
{
public:
    explicit ObjectBytes(std::uint32_t object_type) : AtomBytes(LV2_Atom_Object_Body{0, object_type}) {}
    template <class T>
    ObjectBytes& property(std::uint32_t key, std::uint32_t type, T value)
    {
        const LV2_Atom_Property_Body head{key, 0, {sizeof(T), type}};
        append(&head, sizeof(head));
        append(&value, sizeof(value), true);
        return *this;
    }
};

}  // namespace zq_test
