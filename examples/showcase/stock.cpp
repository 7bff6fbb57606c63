#include "examples/showcase/stock.h"

#include <filesystem>

#include "examples/support/picture_file.h"

namespace rastel::showcase {

namespace {

using example::Picture;
using Pictures = std::vector<Picture>;

std::string MediaFolder(const std::string& program) {
    const std::filesystem::path beside = std::filesystem::path(program).parent_path() / "media";
    std::error_code ignored;
    return std::filesystem::is_directory(beside, ignored) ? beside.string() : RASTEL_MEDIA_FOLDER;
}

std::optional<Pictures> ReadPhotos(const std::vector<std::string>& files, std::string& error) {
    Pictures photos;
    for (const std::string& file : files) {
        std::optional<Picture> picture = example::ReadPicture(file, error);
        if (!picture) {
            return std::nullopt;
        }
        photos.push_back(std::move(*picture));
    }
    return photos;
}

Pictures UsualPhotos(const std::string& folder) {
    Pictures photos;
    int variant = 0;
    for (const char* const name : {"cat.jpg", "launch.jpg", "coffee.jpg", "stars.jpg"}) {
        std::string error;
        std::optional<Picture> picture = example::ReadPicture(folder + "/" + name, error);
        if (!picture) {
            picture = example::GeneratePicture(480, 320, variant);
        }
        if (picture) {
            photos.push_back(std::move(*picture));
        }
        ++variant;
    }
    return photos;
}

// A ball, for a build that lacks the sprite's file or its format.
Picture Ball() {
    constexpr int side = 80;
    Picture ball = *example::MakePicture(side, side);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int dx = 2 * x + 1 - side, dy = 2 * y + 1 - side;
            const int light = 255 - ((x + y) * 100) / side;
            ball.Row(y)[x] = dx * dx + dy * dy > side * side
                                 ? 0
                                 : 0xFF000000u | static_cast<DWORD>(light) << 16 | static_cast<DWORD>(light / 2) << 8;
        }
    }
    ball.hasAlpha = true;
    return ball;
}

// With transparency of its own, or of the colour of its first pixel.
Picture Sprite(const std::string& path) {
    std::string error;
    std::optional<Picture> read = example::ReadPicture(path, error);
    Picture sprite = read ? std::move(*read) : Ball();
    const DWORD surroundings = sprite.pixels[0];
    for (DWORD& pixel : sprite.pixels) {
        pixel = !sprite.hasAlpha && pixel == surroundings ? 0 : pixel;
    }
    sprite.hasAlpha = true;
    return sprite;
}

// Over paper, where the picture is transparent.
void Flatten(Picture& picture) {
    for (DWORD& pixel : picture.pixels) {
        const DWORD coverage = pixel >> 24;
        DWORD flat = 0xFF000000u;
        for (const int shift : {0, 8, 16}) {
            const DWORD paper = 240 * (255 - coverage);
            flat |= (((pixel >> shift) & 0xFF) * coverage + paper) / 255 << shift;
        }
        pixel = flat;
    }
    picture.hasAlpha = false;
}

}   // namespace

std::optional<Stock> LoadStock(CDisplayManager& manager, const std::vector<std::string>& files,
                               const std::string& program, std::string& error) {
    const std::string folder = MediaFolder(program);
    std::optional<Pictures> photos = files.empty() ? UsualPhotos(folder) : ReadPhotos(files, error);
    if (!photos) {
        return std::nullopt;
    }
    Stock stock;
    stock.folder = folder;
    error = "there is not enough memory for the pictures";
    for (Picture& photo : *photos) {
        Flatten(photo);
        stock.photos.push_back(example::ToSurface(manager, photo));
        if (!stock.photos.back()) {
            return std::nullopt;
        }
    }
    if (photos->empty()) {
        return std::nullopt;
    }
    stock.brightness = example::ToPlane(manager, photos->front());
    const Picture balloon = Sprite(folder + "/balloon.bmp");
    const Picture cup = Sprite(folder + "/cup.png");
    stock.balloon = example::ToSurface(manager, example::Keyed(balloon, spriteKey));
    stock.cup = example::ToSurface(manager, example::Keyed(cup, spriteKey));
    stock.cupCoverage = example::AlphaToPlane(manager, cup);
    if (!stock.brightness || !stock.balloon || !stock.cup || !stock.cupCoverage) {
        return std::nullopt;
    }
    return stock;
}

}   // namespace rastel::showcase
