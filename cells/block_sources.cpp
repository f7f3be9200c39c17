#include "block_sources.h"

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <new>
#include <system_error>

namespace basbdcells {

namespace {

constexpr std::size_t block_size = std::size_t{1} << 16U;

struct gzip_closer {
    void operator()(gzFile_s* file) const { gzclose(file); }
};

/// An open file and the block that was read last.
struct gzip_blocks {
    std::unique_ptr<gzFile_s, gzip_closer> file;
    std::array<char, block_size> block{};

    std::string_view read()
    {
        if (!file) {
            return {};
        }
        const int size = gzread(file.get(), block.data(), static_cast<unsigned>(block.size()));
        if (size > 0) {
            return {block.data(), static_cast<std::size_t>(size)};
        }
        const std::string reason = fault();
        file.reset();
        if (!reason.empty()) {
            throw text_error(0, reason);
        }
        return {};
    }

    /// What went wrong in the last call; empty at the end of the file.
    std::string fault() const
    {
        int code = Z_OK;
        const std::string_view message = gzerror(file.get(), &code);
        switch (code) {
        case Z_OK:
        case Z_STREAM_END:
            return "";
        case Z_ERRNO:
            return "cannot be read: " + std::generic_category().message(errno);
        case Z_BUF_ERROR:
            return "compressed data without an end";
        case Z_MEM_ERROR:
            throw std::bad_alloc();
        default: // the text begins with the name that zlib gives the file
            return "damaged compressed data: " +
                   std::string(message.substr(std::min(message.find(": ") + 2, message.size())));
        }
    }
};

} // namespace

block_source blocks_of_text(std::string_view text)
{
    return [text]() mutable {
        const std::string_view block = text.substr(0, block_size);
        text.remove_prefix(block.size());
        return block;
    };
}

block_source blocks_of_file(const std::string& path)
{
    const int descriptor =
        path == "-" ? dup(STDIN_FILENO) : open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return nullptr;
    }
    const auto blocks = std::make_shared<gzip_blocks>();
    blocks->file.reset(gzdopen(descriptor, "rb"));
    if (!blocks->file) {
        close(descriptor);
        throw std::bad_alloc();
    }
    gzbuffer(blocks->file.get(), static_cast<unsigned>(block_size));
    return [blocks] { return blocks->read(); };
}

} // namespace basbdcells
