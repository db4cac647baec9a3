#pragma once

#include <memory>
#include <string>

namespace sys
{

// A short-lived handle on one key of the user's own settings store, named by a
// "/"-separated path below the store's "Software" key (Windows: the registry
// below HKEY_CURRENT_USER\Software; elsewhere a folder tree below the user's
// configuration folder). Values are strings of at most 1023 bytes without
// zero bytes.
class PersistentKeyList
{
public:
    static constexpr std::size_t max_value_size = 1023;

    // Opens (or, with create, creates) every key along the path; empty
    // components are skipped, so "a//b/" names a/b. Throws std::runtime_error
    // when a key cannot be opened or created.
    PersistentKeyList(const std::string& path, bool create);
    ~PersistentKeyList();
    PersistentKeyList(const PersistentKeyList&) = delete;
    PersistentKeyList& operator=(const PersistentKeyList&) = delete;

    // 0 and the value, or -1 and the empty string when it cannot be read.
    int get_string(const std::string& name, std::string& value) const;
    // 0, or -1 when the value is too long, holds a zero byte or cannot be written.
    int set_string(const std::string& name, const std::string& value);

private:
    // The keys opened on the way down, per platform; deleting it closes them.
    struct State;
    struct StateDeleter
    {
        void operator()(State* state) const;
    };
    using StatePtr = std::unique_ptr<State, StateDeleter>;

    [[noreturn]] static void throw_path_error(bool create);

    // Platform side.
    static StatePtr open_software_key();
    void open_sub_key(const std::string& name, bool create);
    // Reads at most capacity bytes, counting the terminating zero where the
    // platform stores one; false when the value is missing or longer.
    bool query_value(const std::string& name, char* buffer, std::size_t capacity, std::size_t& length) const;
    bool store_value(const std::string& name, const std::string& value);

    StatePtr _state;
};

}  // namespace sys
