#include "ParentChannel.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace vsthost
{

ParentChannel::ParentChannel(const std::string& token)
{
    char* end = nullptr;
    const long fd = std::strtol(token.c_str(), &end, 10);
    // Not passed on: a helper program the plug-in starts must not hold the
    // parent's pipe open after this process is gone.
    if (token.empty() || *end != 0 || fd < 0 || fcntl(static_cast<int>(fd), F_SETFD, FD_CLOEXEC) != 0)
    {
        throw std::invalid_argument("no report channel " + token);
    }
    _handle = fd;
}

ParentChannel::~ParentChannel()
{
    close(static_cast<int>(_handle));
}

void ParentChannel::end_if_heap_corrupt()
{
    // glibc checks a block's neighbours each time it frees one and aborts on
    // damage: there is nothing more to walk.
}

void ParentChannel::write(const std::string& text)
{
    std::size_t done = 0;
    while (done < text.size())
    {
        const ssize_t n = ::write(static_cast<int>(_handle), text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR)
        {
            continue;
        }
        if (n <= 0)
        {
            std::_Exit(1);
        }
        done += static_cast<std::size_t>(n);
    }
}

}  // namespace vsthost
