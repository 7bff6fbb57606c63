#include "support/suite.h"

#include <cstdio>
#include <exception>

namespace rastel::bench {
int Suite::Run(int argc, char** argv) {
    // Many short repetitions in random order: a quiet moment is all that a minimum needs, and nobody owns it.
    std::string defaults[] = {"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=12",
                              "--benchmark_min_time=0.004"};
    std::vector<char*> arguments{argv[0]};
    for (std::string& text : defaults) {
        arguments.push_back(text.data());
    }
    arguments.insert(arguments.end(), argv + 1, argv + argc);   // a later flag wins
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 1;
    }
    try {
        Display display;
        Report report(aims_, watch_);
        std::map<Size, std::unique_ptr<Scene>> scenes;
        for (const Size size : sizes_) {
            for (const Contender& contender : contenders_) {
                const std::string sizeText = std::to_string(size.width) + "x" + std::to_string(size.height);
                report.Expect(contender.operation, sizeText, contender.name);
                const std::string name = contender.operation + "/" + sizeText + "/" + contender.name;
                benchmark::RegisterBenchmark(name.c_str(), [&, size](benchmark::State& state) {
                    std::unique_ptr<Scene>& scene = scenes[size];
                    if (!scene) {
                        scene = std::make_unique<Scene>(display.Manager(), size);
                    }
                    contender.measure(state, *scene);
                });
            }
        }
        std::printf("%s\n", display.Profile().c_str());
        benchmark::RunSpecifiedBenchmarks(&report);
        benchmark::Shutdown();
        benchmark::ClearRegisteredBenchmarks();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

}   // namespace rastel::bench
