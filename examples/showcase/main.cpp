// Shows what Rastel does: a page composed in its surfaces and presented on a display.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iterator>

#include "examples/showcase/options.h"
#include "examples/showcase/page.h"
#include "examples/support/picture_file.h"
#include "rastel/platform/ddraw.h"
#include "rastel/platform/gdiplus.h"

namespace rastel::showcase {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int succeeded = 0, failed = 1, misused = 2;
constexpr int framesEachSecond = 60;

int Fail(const std::string& message) {
    std::fprintf(stderr, "rastel-showcase: %s\n", message.c_str());
    return failed;
}

// Counts frames, and tells twice a second how fast they are.
class FrameCounter {
public:
    explicit FrameCounter(example::Window& window) : window_(window) {}

    void Count(Clock::duration drawing) {
        ++frames_;
        drawing_ += drawing;
        const auto passed = Clock::now() - since_;
        if (passed < std::chrono::milliseconds(500)) {
            return;
        }
        char title[96];
        std::snprintf(title, sizeof(title), "Rastel showcase - %.0f frames per second, %.1f ms each",
                      frames_ / std::chrono::duration<double>(passed).count(),
                      std::chrono::duration<double, std::milli>(drawing_).count() / frames_);
        window_.SetTitle(title);
        frames_ = 0;
        drawing_ = {};
        since_ = Clock::now();
    }

private:
    example::Window& window_;
    Clock::time_point since_ = Clock::now();
    Clock::duration drawing_{};
    int frames_ = 0;
};

constexpr double secondsOfPage = 8;

// A primary surface that a user may tell how to present.
class ChosenPrimary : public CPrimarySurface {
public:
    void Choose(Path path) {
        switch (path) {
            case Path::StretchDibits:
                m_pfnBlt = &ChosenPrimary::BltStretchDIBits;
                break;
            case Path::Buffered:
                m_pfnBlt = &ChosenPrimary::BltBuffered;
                break;
            case Path::NoConvert:
                m_pfnBlt = &ChosenPrimary::BltNoConvert;
                break;
        }
    }
};

// GDI+ and COM are the host's to start.
class SystemSession {
public:
    SystemSession() {
        ::CoInitialize(nullptr);
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~SystemSession() {
        Gdiplus::GdiplusShutdown(token_);
        ::CoUninitialize();
    }
    SystemSession(const SystemSession&) = delete;
    SystemSession& operator=(const SystemSession&) = delete;

private:
    ULONG_PTR token_ = 0;
};

struct Show {
    CDisplayManager& manager;
    CPrimarySurface& primary;
    const Stock& stock;
    example::Window& window;
    std::optional<std::size_t> page;   // nothing: by turns
};

// Whether the last frame reached the screen.
bool RunFrames(const Show& show, int frames, bool inRealTime) {
    std::unique_ptr<Page> page;
    SIZE shownSize = {0, 0};
    std::size_t shownPage = 0;
    FrameCounter counter(show.window);
    const Clock::time_point start = Clock::now();
    Clock::time_point due = start;   // of the next frame
    for (int frame = 0; frames == 0 || frame < frames; ++frame) {
        const Clock::time_point begin = Clock::now();
        const SIZE size = show.window.ClientSize();
        const std::chrono::duration<double> passed = begin - start;
        const double seconds = inRealTime ? passed.count() : static_cast<double>(frame) / framesEachSecond;
        const std::size_t wanted =
            show.page.value_or(inRealTime ? static_cast<std::size_t>(seconds / secondsOfPage) % std::size(pages) : 0);
        if (!page || wanted != shownPage || size.cx != shownSize.cx || size.cy != shownSize.cy) {
            page = pages[wanted].make(
                {show.manager, show.stock, size, show.window.Handle(), show.manager.GetDisplayIdString().GetString()});
            shownSize = size;
            shownPage = wanted;
        }
        if (page) {
            page->Draw(seconds);
            if (!show.primary.Blt(0, 0, page->Surface(), nullptr) && !inRealTime) {
                return false;
            }
        } else if (size.cx > 0 && size.cy > 0) {
            return false;
        }
        const Clock::duration drawing = Clock::now() - begin;
        if (inRealTime) {
            counter.Count(drawing);
            // A late frame is not made up for by the ones behind it.
            due = std::max(due + std::chrono::nanoseconds(std::chrono::seconds(1)) / framesEachSecond, Clock::now());
            const auto wait = std::chrono::floor<std::chrono::milliseconds>(due - Clock::now()).count();
            if (!show.window.Wait(wait > 0 ? static_cast<int>(wait) : 0)) {
                break;
            }
        }
    }
    return true;
}

int WriteScreen(example::Window& window, const std::string& path) {
    POINT corner = {0, 0};
    ::ClientToScreen(window.Handle(), &corner);
    const SIZE size = window.ClientSize();
    const RECT area = {corner.x, corner.y, corner.x + size.cx, corner.y + size.cy};
    const std::optional<example::Picture> picture = example::CaptureScreen(area);
    std::string error;
    if (!picture) {
        return Fail("the screen can't be read back");
    }
    return example::WritePng(path, *picture, error) ? succeeded : Fail(error);
}

int Run(const Options& options, const std::string& program) {
    std::string error;
    const bool onDesktop = !options.display && example::HasDesktop();
    const std::unique_ptr<example::Window> window =
        onDesktop ? example::OpenWindow("Rastel showcase", {1024, 768}, error) : example::CoverMemoryDisplay();
    if (!window) {
        return Fail(error.empty() ? "there is no display" : error);
    }

    const SystemSession session;
    CDisplayManager manager;
    manager.Initialize(window->Handle());
    const Reference<ChosenPrimary> primary(new ChosenPrimary);
    if (!primary->Initialize(&manager) || !primary->SetWindow(window->Handle())) {
        return Fail("the display can't be presented on");
    }
    if (options.path) {
        primary->Choose(*options.path);
    }
    const std::optional<Stock> stock = LoadStock(manager, options.files, program, error);
    if (!stock) {
        return Fail(error);
    }
    const int frames = options.frames.value_or(onDesktop ? 0 : 1);
    if (!RunFrames({manager, *primary, *stock, *window, options.page}, frames, onDesktop)) {
        return Fail("the page can't be drawn");
    }
    if (onDesktop && !options.out) {
        return succeeded;
    }
    return WriteScreen(*window, options.out.value_or("showcase.png"));
}

int Start(int count, char** arguments) {
    std::string error;
    const std::optional<Options> options = ReadOptions(count, arguments, error);
    if (options && options->help) {
        std::fputs(usage, stdout);
        return succeeded;
    }
    if (options && options->display && !example::UseMemoryDisplay(*options->display)) {
        error = "this build presents on the desktop only, not in memory";
    }
    if (!options || !error.empty()) {
        std::fprintf(stderr, "rastel-showcase: %s\nTry rastel-showcase --help.\n", error.c_str());
        return misused;
    }
    return Run(*options, arguments[0] ? arguments[0] : "");
}

}   // namespace

}   // namespace rastel::showcase

int main(int count, char** arguments) {
    return rastel::showcase::Start(count, arguments);
}
