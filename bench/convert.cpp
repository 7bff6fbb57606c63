// Lines of pixels in the formats of displays. The yardstick copies the source's bytes.
#include "families.h"
#include "rastel/display/line_converters.h"
#include "support/contenders.h"
#include "support/peers.h"

#if defined(RASTEL_BENCH_HAS_OPENCV)
#include <opencv2/imgproc.hpp>
#endif

namespace rastel::bench {
namespace {

using Convert = void (*)(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch);

void AddRastel(Suite& suite, const std::string& operation, const char* contender, Convert convert) {
    suite.Add(operation, contender, [convert](const Round& r) {
        convert(r.to.at, r.fromNoise.at, r.width, r.height, r.to.pitch, r.fromNoise.pitch);
    });
}

#if defined(RASTEL_BENCH_HAS_PIXMAN)
void AddPixman(Suite& suite, const std::string& operation, pixman_format_code_t format) {
    suite.AddPrepared(operation, "pixman", [format](Scene& scene) {
        std::vector<PixmanOwner> targets;
        for (unsigned i = 0; i < roundCount; ++i) {
            const Area& whole = scene.At(i).wholeTarget;
            targets.push_back(PixmanImage(whole, scene.GetSize().width + targetMargin,
                                          scene.GetSize().height + targetMargin, format));
        }
        return [sources = PixmanImages(scene, [](const Round& r) { return r.noise; }), targets](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            PixmanComposite(PIXMAN_OP_SRC, sources[i], targets[i], r);
        };
    });
}
#endif

#if defined(RASTEL_BENCH_HAS_SDL2)
void AddSdl(Suite& suite, const std::string& operation, Uint32 format) {
    suite.Add(operation, "SDL2", [format](const Round& r) {
        return SDL_ConvertPixels(r.width, r.height, SDL_PIXELFORMAT_ARGB8888, r.fromNoise.at, r.fromNoise.pitch, format,
                                 r.to.at, r.to.pitch) == 0;
    });
}
#endif

#if defined(RASTEL_BENCH_HAS_OPENCV)
void AddOpenCv(Suite& suite, const std::string& operation, int code, int targetType) {
    suite.Add(operation, "OpenCV", [code, targetType](const Round& r) {
        cv::setNumThreads(1);
        const cv::Mat source(r.height, r.width, CV_8UC4, r.fromNoise.at, static_cast<std::size_t>(r.fromNoise.pitch));
        cv::Mat target(r.height, r.width, targetType, r.to.at, static_cast<std::size_t>(r.to.pitch));
        cv::cvtColor(source, target, code);
    });
}
#endif

}   // namespace

void AddConvert(Suite& suite) {
    for (const char* const operation : {"to 565", "to 555", "to 24 bits", "to 32 bits", "to 8 bits"}) {
        suite.Add(operation, "memcpy", [](const Round& r) { CopyRows(r.to, r.fromNoise, r.width * 4, r.height); });
    }
    AddRastel(suite, "to 565", "Rastel", Blt565MMX);
    AddRastel(suite, "to 565", "Rastel plain", Blt565);
    AddRastel(suite, "to 555", "Rastel", Blt555MMX);
    AddRastel(suite, "to 555", "Rastel plain", Blt555);
    AddRastel(suite, "to 24 bits", "Rastel", Blt24);
    AddRastel(suite, "to 32 bits", "Rastel", Blt32);
    AddRastel(suite, "to 8 bits", "Rastel", Blt8);
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    AddPixman(suite, "to 565", PIXMAN_r5g6b5);
    AddPixman(suite, "to 555", PIXMAN_x1r5g5b5);
    AddPixman(suite, "to 24 bits", PIXMAN_r8g8b8);
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    AddSdl(suite, "to 565", SDL_PIXELFORMAT_RGB565);
    AddSdl(suite, "to 555", SDL_PIXELFORMAT_XRGB1555);
    AddSdl(suite, "to 24 bits", SDL_PIXELFORMAT_BGR24);
    AddSdl(suite, "to 8 bits", SDL_PIXELFORMAT_RGB332);
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add("to 565", "libyuv", [](const Round& r) {
        return libyuv::ARGBToRGB565(r.fromNoise.at, r.fromNoise.pitch, r.to.at, r.to.pitch, r.width, r.height) == 0;
    });
    suite.Add("to 24 bits", "libyuv", [](const Round& r) {
        return libyuv::ARGBToRGB24(r.fromNoise.at, r.fromNoise.pitch, r.to.at, r.to.pitch, r.width, r.height) == 0;
    });
#endif
#if defined(RASTEL_BENCH_HAS_OPENCV)
    AddOpenCv(suite, "to 565", cv::COLOR_BGRA2BGR565, CV_8UC2);
    AddOpenCv(suite, "to 555", cv::COLOR_BGRA2BGR555, CV_8UC2);
    AddOpenCv(suite, "to 24 bits", cv::COLOR_BGRA2BGR, CV_8UC3);
#endif
}

}   // namespace rastel::bench
