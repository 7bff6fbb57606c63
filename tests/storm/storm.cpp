// A storm of random calls on random stores: odd sizes, padded pitches, wild rectangles, likely extremes of bytes. What
// every call leaves behind goes into a checksum, and every form of the kernels must come to the same one.
//
//   rastel_storm [--calls N] [--seed S] [--one K]
//
// --one K makes call K alone, in every form, and tells about it.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "rastel/display/display_manager.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/mmx.h"
#include "tests/storm/operations.h"

namespace {

struct Options {
    int calls = 3000;
    unsigned seed = 1;
    int one = -1;
};

struct Form {
    std::string name;
    const char* table;
    int mmx;
};

std::vector<Form> FormsHere() {
    std::vector<Form> forms;
    for (const auto* const table : rastel::kernels::AllTables()) {
        if (table->runsHere()) {
            forms.push_back({std::string("vector form, ") + table->name, table->name, 1});
            forms.push_back({std::string("plain form, ") + table->name, table->name, 0});
        }
    }
    return forms;
}

bool ParseNumber(const char* text, long low, long high, long* value) {
    char* end = nullptr;
    *value = std::strtol(text, &end, 10);
    return *text && !*end && *value >= low && *value <= high;
}

bool Parse(int argc, char** argv, Options* options) {
    for (int i = 1; i < argc; i += 2) {
        const std::string name = argv[i];
        long value = 0;
        if (i + 1 >= argc || !ParseNumber(argv[i + 1], 0, 2000000000, &value)) {
            return false;
        }
        if (name == "--calls") {
            options->calls = static_cast<int>(value);
        } else if (name == "--seed") {
            options->seed = static_cast<unsigned>(value);
        } else if (name == "--one") {
            options->one = static_cast<int>(value);
        } else {
            return false;
        }
    }
    return true;
}

struct Outcome {
    std::uint64_t sum;
    bool formsDiffer;     // plain and vector arithmetic have numbers of their own here
    bool paddingStands;   // nothing was written between rows
};

// One call in one form, on stores made from the call's own number, so that any call can be made alone.
Outcome Call(const Form& form, unsigned seed, int call, std::string* what) {
    rastel::kernels::ForceTable(form.table);
    EnableMMX(form.mmx);
    rastel::storm::Scene scene(seed, call);
    const auto& operations = rastel::storm::Operations();
    const auto& operation =
        operations[static_cast<std::size_t>(scene.Pick(0, static_cast<int>(operations.size()) - 1))];
    const int result = operation.run(scene);
    if (what) {
        *what = operation.name + (" -> " + std::to_string(result)) + ", " + scene.Describe();
    }
    return {scene.Checksum(result), operation.formsDiffer, scene.PaddingStands()};
}

bool FormsAgree(const std::vector<Form>& forms, unsigned seed, int call, std::vector<std::uint64_t>* sums) {
    bool agree = true;
    std::uint64_t expected[2] = {0, 0};
    for (std::size_t i = 0; i < forms.size(); ++i) {
        const Outcome outcome = Call(forms[i], seed, call, nullptr);
        (*sums)[i] = (*sums)[i] * 0x9E3779B97F4A7C15ull + outcome.sum;
        const int arithmetic = outcome.formsDiffer ? forms[i].mmx : 0;
        if (expected[arithmetic] == 0) {
            expected[arithmetic] = outcome.sum;
        }
        agree = agree && outcome.sum == expected[arithmetic] && outcome.paddingStands;
    }
    return agree;
}

void Tell(const std::vector<Form>& forms, unsigned seed, int call) {
    for (const Form& form : forms) {
        std::string what;
        const Outcome outcome = Call(form, seed, call, &what);
        std::printf("call %d, %s: %016llx%s  %s\n", call, form.name.c_str(),
                    static_cast<unsigned long long>(outcome.sum), outcome.paddingStands ? "" : " wrote between rows",
                    what.c_str());
    }
}

}   // namespace

int main(int argc, char** argv) {
    Options options;
    if (!Parse(argc, argv, &options)) {
        std::fprintf(stderr, "usage: %s [--calls N] [--seed S] [--one K]\n", argv[0]);
        return 2;
    }
    const CDisplayManager manager;   // filters ask it for their planes
    rastel::storm::ChooseCopyAndFill();
    const std::vector<Form> forms = FormsHere();
    if (options.one >= 0) {
        Tell(forms, options.seed, options.one);
        return 0;
    }
    std::vector<std::uint64_t> sums(forms.size());
    int disagreements = 0;
    for (int call = 0; call < options.calls; ++call) {
        if (!FormsAgree(forms, options.seed, call, &sums) && ++disagreements <= 10) {
            Tell(forms, options.seed, call);
        }
    }
    for (std::size_t i = 0; i < forms.size(); ++i) {
        std::printf("%-24s %016llx\n", forms[i].name.c_str(), static_cast<unsigned long long>(sums[i]));
    }
    if (disagreements > 0) {
        std::fprintf(stderr, "%d of %d calls wrote between rows or differ between forms that must agree\n",
                     disagreements, options.calls);
        return 1;
    }
    return 0;
}
