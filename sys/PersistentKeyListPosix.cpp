#include "sys/PersistentKeyList.h"

#include "sys/PersistentKeyListHandles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

// The store is a folder tree below the user's configuration folder
// ($XDG_CONFIG_HOME, or ~/.config), which plays the part of the registry's
// "Software" key: a key is a folder, a value is a file "<name>.value" in its
// key's folder holding the text as it is. Names are stored with every byte
// other than letters, digits, space, "_" and "-" written as %XX, so no name can
// climb out of its folder ("..") or clash with a value file.

namespace sys
{

namespace
{

std::string encode_name(const std::string& name)
{
    static const char hex[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : name)
    {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                           c == ' ' || c == '_' || c == '-';
        if (plain)
        {
            encoded += c;
        }
        else
        {
            encoded += '%';
            encoded += hex[byte >> 4];
            encoded += hex[byte & 15];
        }
    }
    return encoded;
}

std::string value_file_name(const std::string& name)
{
    return encode_name(name) + ".value";
}

std::filesystem::path get_config_home()
{
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg != nullptr && xdg[0] == '/')
    {
        return xdg;
    }
    const char* home = std::getenv("HOME");
    return home != nullptr && home[0] == '/' ? std::filesystem::path(home) / ".config" : std::filesystem::path();
}

bool write_all(int fd, const std::string& text)
{
    std::size_t done = 0;
    while (done < text.size())
    {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n < 0)
        {
            if (errno == EINTR)
            {
                continue;
            }
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    return true;
}

ssize_t read_some(int fd, char* buffer, std::size_t size)
{
    ssize_t n;
    do
    {
        n = ::read(fd, buffer, size);
    } while (n < 0 && errno == EINTR);
    return n;
}

// Up to capacity bytes; false when the file holds more or cannot be read.
bool read_all(int fd, char* buffer, std::size_t capacity, std::size_t& length)
{
    length = 0;
    while (length < capacity)
    {
        const ssize_t n = read_some(fd, buffer + length, capacity - length);
        if (n <= 0)
        {
            return n == 0;
        }
        length += static_cast<std::size_t>(n);
    }
    char beyond;
    return read_some(fd, &beyond, 1) == 0;
}

struct CloseHandle
{
    void operator()(int fd) const { ::close(fd); }
};

}  // namespace

// The configuration folder first, then one folder per path component.
struct PersistentKeyList::State : PersistentKeyListHandles<int, CloseHandle>
{
};

void PersistentKeyList::StateDeleter::operator()(State* state) const
{
    delete state;
}

PersistentKeyList::StatePtr PersistentKeyList::open_software_key()
{
    StatePtr state(new State());
    state->make_room();
    const std::filesystem::path home = get_config_home();
    std::error_code ec;
    // Like the registry's "Software" key, the root is always there for its user.
    if (!home.empty())
    {
        std::filesystem::create_directories(home, ec);
    }
    const int fd = home.empty() ? -1 : ::open(home.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
    {
        throw_path_error(false);
    }
    state->add(fd);
    return state;
}

void PersistentKeyList::open_sub_key(const std::string& name, bool create)
{
    _state->make_room();
    const std::string folder = encode_name(name);
    if (create && ::mkdirat(_state->use_last(), folder.c_str(), 0700) != 0 && errno != EEXIST)
    {
        throw_path_error(true);
    }
    const int fd = ::openat(_state->use_last(), folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
    {
        throw_path_error(create);
    }
    _state->add(fd);
}

bool PersistentKeyList::query_value(const std::string& name, char* buffer, std::size_t capacity,
                                    std::size_t& length) const
{
    const int fd = ::openat(_state->use_last(), value_file_name(name).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0)
    {
        return false;
    }
    // Files hold the text without a terminating zero.
    const bool ok = read_all(fd, buffer, capacity - 1, length);
    ::close(fd);
    return ok;
}

// Written to a private file first and renamed over the value, so a reader
// sees the old text or the new one, never a part.
bool PersistentKeyList::store_value(const std::string& name, const std::string& value)
{
    static std::atomic<unsigned> counter{0};
    const std::string file = value_file_name(name);
    const std::string temp = file + ".tmp" + std::to_string(::getpid()) + "-" + std::to_string(counter++);
    const int dir = _state->use_last();
    const int fd = ::openat(dir, temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0)
    {
        return false;
    }
    const bool written = write_all(fd, value);
    const bool closed = ::close(fd) == 0;
    if (written && closed && ::renameat(dir, temp.c_str(), dir, file.c_str()) == 0)
    {
        return true;
    }
    ::unlinkat(dir, temp.c_str(), 0);
    return false;
}
}  // namespace sys
