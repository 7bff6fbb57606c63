// Who is compared at what. A family of operations is one file that adds its contenders to a Suite:
//
//     suite.Add("copy", "memcpy", [](const Round& r) { ... });           // a call that needs nothing prepared
//     suite.AddPrepared("copy", "pixman", [](Scene& s) {                  // one that does, for each size
//         return [images = Images(s)](const Round& r) { ... };
//     });
//
// A call returns nothing, or whether it did its work; a call that refuses is reported, not timed. The contender named
// "memcpy" is the yardstick of its operation; names that start with "Rastel" are ours, all others are peers.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/display.h"
#include "support/report.h"
#include "support/scene.h"

namespace rastel::bench {

class Suite {
public:
    explicit Suite(std::vector<Size> sizes = {{16, 16}, {32, 32}, {256, 256}, {317, 211}, {640, 480}, {1920, 1080}})
        : sizes_(std::move(sizes)) {}

    template <class Prepare>
    void AddPrepared(std::string operation, std::string contender, Prepare prepare) {
        contenders_.push_back(
            {std::move(operation), std::move(contender),
             [prepare](benchmark::State& state, Scene& scene) { Measure(state, scene, prepare(scene)); }});
    }

    template <class Call>
    void Add(std::string operation, std::string contender, Call call) {
        AddPrepared(std::move(operation), std::move(contender), [call](Scene&) { return call; });
    }

    // From this many pixels on, "Rastel" is to take at most `ratio` times what memcpy takes.
    void Aim(std::string operation, double ratio, long long fromPixels) {
        aims_.push_back({std::move(operation), ratio, fromPixels});
    }

    void MeasureBy(Watch watch) { watch_ = watch; }

    int Run(int argc, char** argv);   // what main returns

private:
    struct Contender {
        std::string operation, name;
        std::function<void(benchmark::State&, Scene&)> measure;
    };

    template <class Call>
    static bool Works(Call& call, const Round& round) {
        if constexpr (std::is_void_v<decltype(call(round))>) {
            call(round);
            return true;
        } else {
            return static_cast<bool>(call(round));
        }
    }

    template <class Call>
    static void Measure(benchmark::State& state, Scene& scene, Call call) {
        for (unsigned i = 0; i < roundCount; ++i) {
            if (!Works(call, scene.At(i))) {
                state.SkipWithError("the call refused");
                return;
            }
        }
        unsigned number = 0;
        for ([[maybe_unused]] auto _ : state) {
            call(scene.At(number++));
            benchmark::ClobberMemory();
        }
    }

    std::vector<Size> sizes_;
    std::vector<Contender> contenders_;
    std::vector<AimedRatio> aims_;
    Watch watch_ = Watch::Processor;
};

}   // namespace rastel::bench
