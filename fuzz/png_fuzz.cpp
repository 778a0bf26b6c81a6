// Any bytes as a picture: as they are, and with the check sums of their chunks put right, so that what stands
// in the chunks is looked at, too. What came of it is drawn in every way.
#include "CORE/ForeignData.h"
#include "Require.h"
#include "Tovrane/CBitmap.h"
#include "Tovrane/CDrawContext.h"
#include "Tovrane/CMACBitmap.h"
#include "Tovrane/CPoint.h"
#include "Tovrane/CRect.h"
#include "Tovrane/PNGStreams.h"

#include <cstring>
#include <string>
#include <zlib.h>

namespace
{
using Tovra::CPoint;
using Tovra::CRect;

class MemoryStream : public Tovra::ITovraPNGStream
{
public:
    explicit MemoryStream(const std::string& content) : bytes(content) {}
    bool read(unsigned char* target, unsigned long count) override
    {
        if (count > bytes.size() - position)
            return false;
        std::memcpy(target, bytes.data() + position, count);
        position += count;
        return true;
    }

private:
    const std::string& bytes;
    size_t position = 0;
};

std::string withRightCheckSums(std::string file)
{
    constexpr size_t signature = 8, around = 12; // length and type before the data of a chunk, the sum behind
    for (size_t at = signature; at + around <= file.size();)
    {
        const size_t length = Core::readBig32(&file[at]);
        if (length > file.size() - at - around)
            break;
        const auto* covered = reinterpret_cast<const Bytef*>(&file[at + 4]);
        Core::writeBig32(&file[at + 8 + length], std::uint32_t(crc32(0, covered, uInt(length + 4))));
        at += around + length;
    }
    return file;
}

void tryPicture(const std::string& file)
{
    Tovra::CBitmap bitmap(nullptr, true);
    MemoryStream stream(file);
    require(bitmap.loadFromStream(&stream), "any stream gives a picture, as far as it came");
    const auto* const memory = bitmap.getOSBitmap();
    require(bitmap.getWidth() == memory->getWidth() && bitmap.getHeight() == memory->getHeight(),
            "the picture is as large as its memory");
    require(bitmap.getWidth() <= 8192.0 && bitmap.getHeight() <= 8192.0, "nothing is larger than the limit");

    Tovra::CMACBitmap target;
    target.setSize(16, 16);
    Tovra::PelmoAGG renderer;
    renderer.attach(target.getPixelPtr(), 16, 16, target.getRowBytes());
    auto* const context = new Tovra::CDrawContext(nullptr, nullptr, nullptr);
    context->setAGGRenderer(&renderer);
    context->setClipRect(CRect(0, 0, 16, 16));
    bitmap.draw(context, CRect(-3, -3, 30, 30), CPoint(1, 2));
    bitmap.drawAlphaBlend(context, CRect(2, 2, 9000, 9000), CPoint(), 100);
    bitmap.drawScaled(context, CRect(0, 0, bitmap.getWidth(), bitmap.getHeight()), CRect(1, 1, 12, 12));
    context->setAGGRenderer(nullptr);
    context->forget();
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tryPicture(bytes);
    tryPicture(withRightCheckSums(bytes));
    return 0;
}
