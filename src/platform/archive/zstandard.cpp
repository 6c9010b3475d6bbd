#include "platform/archive/zstandard.h"

#include "common/errors.h"
#include "platform/archive/unpacked_bytes.h"

#include <memory>
#include <new>
#include <zstd.h>

namespace cuedrill::platform::archive {
namespace {

struct Freed {
    void operator()(ZSTD_DCtx* context) const noexcept { ZSTD_freeDCtx(context); }
};

} // namespace

std::string unpack_zstandard(std::string_view frames, std::size_t longest)
{
    constexpr const char* damaged = "The collection in the package is damaged: it cannot be unpacked.";
    const std::unique_ptr<ZSTD_DCtx, Freed> context(ZSTD_createDCtx());
    if (context == nullptr)
        throw std::bad_alloc();
    ZSTD_DCtx_setParameter(context.get(), ZSTD_d_windowLogMax, most_window_log);

    UnpackedBytes result("collection", frames.size(), longest);
    const unsigned long long stated = ZSTD_getFrameContentSize(frames.data(), frames.size());
    if (stated == ZSTD_CONTENTSIZE_ERROR)
        throw common::Error(damaged);
    if (stated != ZSTD_CONTENTSIZE_UNKNOWN)
        result.expect(stated);

    std::string piece(ZSTD_DStreamOutSize(), '\0');
    ZSTD_inBuffer in{.src = frames.data(), .size = frames.size(), .pos = 0};
    for (bool complete = false; !complete;) {
        ZSTD_outBuffer out{.dst = piece.data(), .size = piece.size(), .pos = 0};
        const std::size_t before = in.pos;
        const std::size_t rest = ZSTD_decompressStream(context.get(), &out, &in);
        if (ZSTD_isError(rest) != 0)
            throw common::Error(damaged);
        result.add(std::string_view(piece).substr(0, out.pos));
        complete = rest == 0 && in.pos == in.size;
        // The input ends within a frame.
        if (!complete && in.pos == before && out.pos == 0)
            throw common::Error(damaged);
    }
    return result.take();
}

} // namespace cuedrill::platform::archive
