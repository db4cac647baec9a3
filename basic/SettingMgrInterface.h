#pragma once

#include <memory>
#include <string>
#include <vector>

namespace basic
{

class ConfKeyInterface;
class ConfKeyMulti;
class SettingClientInterface;

// Loads a configuration file and hands its top section to every registered
// client. Derived managers check or decorate the section in the hooks.
class SettingMgrInterface
{
public:
    static constexpr int err_client_twice = -1023;
    static constexpr int err_cannot_open = -1020;
    static constexpr int err_cannot_read = -1019;
    static constexpr int err_not_section = -1016;
    // Added to the key reader's code when the file does not read as a key tree.
    static constexpr int err_reader_offset = -1024;
    // Larger files are not configuration files; reading stops there.
    static constexpr std::size_t max_file_size = 16u << 20;

    virtual ~SettingMgrInterface() = default;

    // Clients are not owned. -1023 when the client is registered already.
    int add_client(SettingClientInterface& client);
    // 0, a code of this class, or the first non-zero answer of a hook or a
    // client; the clients after a failing one are not called.
    int load(const std::string& path);

    // Each hook sees the top section, the file's path and the running status,
    // which it may set to an error code.
    virtual void before_load(const ConfKeyMulti& /*root*/, const std::string& /*path*/, int& /*status*/) {}
    virtual void after_load(const ConfKeyMulti& /*root*/, const std::string& /*path*/, int& /*status*/) {}
    virtual void before_save(ConfKeyMulti& /*root*/, const std::string& /*path*/, int& /*status*/) {}
    virtual void after_save(ConfKeyMulti& /*root*/, const std::string& /*path*/, int& /*status*/) {}

private:
    static int read_file(const std::string& path, std::string& text);
    static int read_root(const std::string& text, std::unique_ptr<ConfKeyMulti>& root);
    static std::unique_ptr<ConfKeyMulti> take_as_section(std::unique_ptr<ConfKeyInterface> key);

    std::vector<SettingClientInterface*> _clients;
};

}  // namespace basic
