// The filters of planes. memcpy moves the plane's bytes; ours makes the larger plane that it gives.
#include <string>

#include "families.h"
#include "support/contenders.h"

#if defined(RASTEL_BENCH_HAS_OPENCV)
#include <opencv2/imgproc.hpp>
#endif

namespace rastel::bench {
namespace {

#if defined(RASTEL_BENCH_HAS_OPENCV)
// `call(source, target, window)` on the round's plane. The peer keeps its target from call to call.
template <class Call>
void AddOpenCv(Suite& suite, const std::string& operation, int radius, Call call) {
    suite.Add(operation, "OpenCV", [radius, call, target = cv::Mat()](const Round& r) mutable {
        cv::setNumThreads(1);
        const cv::Mat source(r.height, r.width, CV_8UC1, r.fromPlane.at, static_cast<std::size_t>(r.fromPlane.pitch));
        call(source, target, cv::Size(2 * radius + 1, 2 * radius + 1));
    });
}
#endif

void AddRadius(Suite& suite, int radius) {
    const std::string blur = "blur " + std::to_string(radius), expand = "expand " + std::to_string(radius);
    suite.Aim(blur, 8.0, 640 * 480);
    AddPlaneMemcpy(suite, blur);
    suite.Add(blur, "Rastel", [radius](const Round& r) { return PlaneOwner(r.plane->Blur(radius)) != nullptr; });
    suite.Aim(expand, 6.0, 640 * 480);
    AddPlaneMemcpy(suite, expand);
    suite.Add(expand, "Rastel",
              [radius](const Round& r) { return PlaneOwner(r.plane->Expand(radius, 200)) != nullptr; });
#if defined(RASTEL_BENCH_HAS_OPENCV)
    AddOpenCv(suite, blur, radius, [](const cv::Mat& source, cv::Mat& target, cv::Size window) {
        cv::blur(source, target, window, cv::Point(-1, -1), cv::BORDER_CONSTANT);
    });
    AddOpenCv(suite, expand, radius, [](const cv::Mat& source, cv::Mat& target, cv::Size window) {
        cv::dilate(source, target, cv::getStructuringElement(cv::MORPH_RECT, window));
    });
#endif
}

}   // namespace

void AddFilters(Suite& suite) {
    for (const int radius : {2, 8, 20}) {
        AddRadius(suite, radius);
    }
}

}   // namespace rastel::bench
