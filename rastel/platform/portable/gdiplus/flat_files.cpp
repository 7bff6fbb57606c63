// The flat functions of image files, and the list of what can be read and written.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/portable/gdiplus/image_file.h"
#include "rastel/platform/portable/gdiplus/native.h"

using rastel::platform::gdip::DecodeImage;
using rastel::platform::gdip::EncodePng;
using rastel::platform::gdip::Guarded;
using rastel::platform::gdip::Picture;

namespace Gdiplus {

namespace {

constexpr off_t largestFile = 256 << 20;

constexpr GUID Codec(DWORD number) {
    return {number, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
}
constexpr GUID Format(DWORD number) {
    return {number, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
}

constexpr BYTE pngSignature[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A}, jpegSignature[] = {0xFF, 0xD8},
               bmpSignature[] = {'B', 'M'}, fullMask[] = {255, 255, 255, 255, 255, 255, 255, 255};

constexpr DWORD isBuiltinBitmap = 0x00010004, canEncode = 1, canDecode = 2;
constexpr CLSID pngCodec = Codec(0x557CF406);
constexpr ImageCodecInfo codecs[] = {
    {pngCodec, Format(0xB96B3CAF), L"Built-in PNG Codec", nullptr, L"PNG", L"*.PNG", L"image/png",
     isBuiltinBitmap | canEncode | canDecode, 1, 1, 8, pngSignature, fullMask},
    {Codec(0x557CF401), Format(0xB96B3CAE), L"Built-in JPEG Codec", nullptr, L"JPEG", L"*.JPG;*.JPEG;*.JPE;*.JFIF",
     L"image/jpeg", isBuiltinBitmap | canDecode, 1, 1, 2, jpegSignature, fullMask},
    {Codec(0x557CF400), Format(0xB96B3CAB), L"Built-in BMP Codec", nullptr, L"BMP", L"*.BMP;*.DIB;*.RLE", L"image/bmp",
     isBuiltinBitmap | canDecode, 1, 1, 2, bmpSignature, fullMask}};

constexpr UINT encoderCount = 1, decoderCount = 3;   // the first of the list write as well

Status CodecsSize(UINT available, UINT* count, UINT* size) {
    if (!count || !size) {
        return InvalidParameter;
    }
    *count = available;
    *size = available * static_cast<UINT>(sizeof(ImageCodecInfo));
    return Ok;
}

Status Codecs(UINT available, UINT count, UINT size, ImageCodecInfo* target) {
    if (!target || count != available || size < available * sizeof(ImageCodecInfo)) {
        return InvalidParameter;
    }
    std::copy(codecs, codecs + available, target);
    return Ok;
}

std::string FileName(const WCHAR* name) {
    std::string text;
    for (; *name; ++name) {
        const auto code = static_cast<char32_t>(*name);
        rastel::platform::AppendUtf8(text, code < 0x110000 ? code : U'?');
    }
    return text;
}

class File {
public:
    File(const std::string& name, int flags) : file_(::open(name.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666)) {}
    ~File() {
        if (file_ >= 0) {
            ::close(file_);
        }
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    explicit operator bool() const { return file_ >= 0; }

    bool ReadAll(std::vector<unsigned char>& bytes) const {
        struct stat status {};
        if (::fstat(file_, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > largestFile) {
            return false;   // folders and devices too
        }
        bytes.resize(static_cast<std::size_t>(status.st_size));
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t count = ::read(file_, bytes.data() + done, bytes.size() - done);
            if (count <= 0) {
                return false;
            }
            done += static_cast<std::size_t>(count);
        }
        return true;
    }

    bool WriteAll(const std::vector<unsigned char>& bytes) const {
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t count = ::write(file_, bytes.data() + done, bytes.size() - done);
            if (count <= 0) {
                return false;
            }
            done += static_cast<std::size_t>(count);
        }
        return true;
    }

private:
    int file_;
};

}   // namespace

Status GetImageEncodersSize(UINT* numEncoders, UINT* size) {
    return CodecsSize(encoderCount, numEncoders, size);
}

Status GetImageEncoders(UINT numEncoders, UINT size, ImageCodecInfo* encoders) {
    return Codecs(encoderCount, numEncoders, size, encoders);
}

Status GetImageDecodersSize(UINT* numDecoders, UINT* size) {
    return CodecsSize(decoderCount, numDecoders, size);
}

Status GetImageDecoders(UINT numDecoders, UINT size, ImageCodecInfo* decoders) {
    return Codecs(decoderCount, numDecoders, size, decoders);
}

namespace DllExports {

GpStatus GdipCreateBitmapFromFile(const WCHAR* name, GpBitmap** bitmap) {
    if (!bitmap) {
        return InvalidParameter;
    }
    *bitmap = nullptr;
    if (!name) {
        return InvalidParameter;
    }
    return Guarded([&] {
        const File file(FileName(name), O_RDONLY);
        if (!file) {
            return FileNotFound;
        }
        std::vector<unsigned char> bytes;
        if (!file.ReadAll(bytes)) {
            return InvalidParameter;
        }
        *bitmap = DecodeImage(bytes).release();
        return *bitmap ? Ok : UnknownImageFormat;
    });
}

GpStatus GdipLoadImageFromFile(const WCHAR* name, GpImage** image) {
    GpBitmap* bitmap = nullptr;
    if (!image) {
        return InvalidParameter;
    }
    const Status status = GdipCreateBitmapFromFile(name, &bitmap);
    *image = bitmap;
    return status;
}

GpStatus GdipSaveImageToFile(GpImage* image, const WCHAR* name, const CLSID* encoder, const EncoderParameters*) {
    if (!image || !name || !encoder || std::memcmp(encoder, &pngCodec, sizeof(pngCodec)) != 0) {
        return InvalidParameter;
    }
    Picture& picture = *Picture::Of(image);
    if (picture.IsLocked()) {
        return WrongState;
    }
    return Guarded([&] {
        std::vector<unsigned char> bytes;
        if (!EncodePng(picture, &bytes)) {
            return GenericError;
        }
        const std::string path = FileName(name);
        const File file(path, O_WRONLY | O_CREAT | O_TRUNC);
        return file && file.WriteAll(bytes) ? Ok : Win32Error;
    });
}

}   // namespace DllExports

}   // namespace Gdiplus
