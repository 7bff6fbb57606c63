// Runs a fuzz target over every file of its corpus, and over each one cut short and bent, where no fuzzer is at hand.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

namespace {

// From a block of exactly that size, so that reading beyond its end shows.
void RunOn(const std::vector<std::uint8_t>& bytes) {
    const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

}   // namespace

int main(int count, char** arguments) {
    int files = 0;
    std::minstd_rand random(1);
    for (int i = 1; i < count; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
            RunOn(bytes);
            for (int pass = 0; pass < 20 && !bytes.empty(); ++pass) {
                std::vector<std::uint8_t> bent = bytes;
                bent[random() % bent.size()] = static_cast<std::uint8_t>(random());
                RunOn(bent);
                bent.resize(random() % bent.size());
                RunOn(bent);
            }
            ++files;
        }
    }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;   // a corpus that isn't found is no success
}
