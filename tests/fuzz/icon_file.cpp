// Icon files: the directory, and each image that it promises.
#include "rastel/image/dib_section.h"
#include "rastel/image/icon_directory.h"
#include "tests/fuzz/input_file_posix.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const rastel::image::IconDirectory directory(rastel::image::IconDirectory::Kind::File, {bytes, count});
    const rastel::fuzz::InputFile file(bytes, count);
    winext::CDibSection image;
    for (int i = 0; i < directory.Count() && i < 8; ++i) {
        const rastel::image::IconEntry entry = directory.Entry(i);
        image.LoadIconImage(nullptr, file.Name().c_str(), entry.width, entry.height, 32);
    }
    image.LoadIconImage(nullptr, file.Name().c_str(), 16, 16, 32);
    return 0;
}
