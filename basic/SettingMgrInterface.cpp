#include "basic/SettingMgrInterface.h"

#include "basic/ConfKeyContentMulti.h"
#include "basic/ConfKeyData.h"
#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "basic/SettingClientInterface.h"

#include <algorithm>
#include <fstream>

namespace basic
{

int SettingMgrInterface::add_client(SettingClientInterface& client)
{
    if (std::find(_clients.begin(), _clients.end(), &client) != _clients.end())
    {
        return err_client_twice;
    }
    _clients.push_back(&client);
    return 0;
}

int SettingMgrInterface::load(const std::string& path)
{
    std::string text;
    std::unique_ptr<ConfKeyMulti> root;
    int status = read_file(path, text);
    if (status == 0)
    {
        status = read_root(text, root);
    }
    if (status != 0)
    {
        return status;
    }
    before_load(*root, path, status);
    for (auto it = _clients.begin(); status == 0 && it != _clients.end(); ++it)
    {
        status = (*it)->load_settings(*root);
    }
    after_load(*root, path, status);
    return status;
}

// Read in blocks rather than lines, so that a file without line feeds (or an
// endless device) cannot grow one line beyond the size limit.
int SettingMgrInterface::read_file(const std::string& path, std::string& text)
{
    std::ifstream in(path, std::ios::binary);
    if (!in.is_open())
    {
        return err_cannot_open;
    }
    char block[16384];
    while (in.read(block, sizeof(block)) || in.gcount() > 0)
    {
        text.append(block, static_cast<std::size_t>(in.gcount()));
        if (text.size() > max_file_size)
        {
            return err_cannot_read;
        }
    }
    return in.bad() ? err_cannot_read : 0;
}

// The file's one top key, as a section. Every load reads with a factory of
// its own: hosts create instances on several threads at once, and a shared
// token list would mix their files. Only a text that gives no key at all is
// refused: a key that comes back with an error holds every member read before
// the error, so a typo near the end of a hand-edited file keeps the keys above it.
int SettingMgrInterface::read_root(const std::string& text, std::unique_ptr<ConfKeyMulti>& root)
{
    ConfKeyFactory factory;
    std::unique_ptr<ConfKeyInterface> key = factory.create_key(text);
    if (key == nullptr)
    {
        return factory.get_last_error() + err_reader_offset;
    }
    root = take_as_section(std::move(key));
    return root != nullptr ? 0 : err_not_section;
}

// A section with no members is written as "name = { }", which reads back as a
// leaf holding an empty list: that is taken as the empty section it was.
std::unique_ptr<ConfKeyMulti> SettingMgrInterface::take_as_section(std::unique_ptr<ConfKeyInterface> key)
{
    if (dynamic_cast<ConfKeyMulti*>(key.get()) != nullptr)
    {
        return std::unique_ptr<ConfKeyMulti>(static_cast<ConfKeyMulti*>(key.release()));
    }
    const auto* leaf = dynamic_cast<const ConfKeyData*>(key.get());
    const auto* list = leaf != nullptr ? dynamic_cast<const ConfKeyContentMulti*>(&leaf->use_content()) : nullptr;
    if (list != nullptr && list->get_nbr_elt() == 0)
    {
        return std::make_unique<ConfKeyMulti>(leaf->get_name());
    }
    return nullptr;
}

}  // namespace basic
