// PNG, JPEG and BMP files, decoded and drawn.
#include <memory>

#include "rastel/platform/gdiplus.h"
#include "tests/fuzz/input_file_posix.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const rastel::fuzz::InputFile file(bytes, count);
    const std::unique_ptr<Gdiplus::Bitmap> picture(Gdiplus::Bitmap::FromFile(file.Name().c_str()));
    if (picture && picture->GetLastStatus() == Gdiplus::Ok) {
        Gdiplus::Bitmap target(8, 8, PixelFormat32bppARGB);
        Gdiplus::Graphics graphics(&target);
        graphics.SetInterpolationMode(Gdiplus::InterpolationModeNearestNeighbor);
        graphics.DrawImage(picture.get(), 0, 0, 8, 8);
    }
    return 0;
}
