#include "rastel/platform/portable/gdi/known_letters.h"

#include <cstddef>

namespace rastel::platform {

namespace {

constexpr std::size_t kLargestLetter = 4096;      // bytes
constexpr std::size_t kCapacityBytes = 4 << 20;   // of all font objects together

std::atomic<unsigned> generation;
std::atomic<std::size_t> bytesKept;

}   // namespace

struct KnownLetters::Kept {
    KnownLetter letter;
    unsigned generation;
    const Kept* before;   // what stood here, for those who found it

    std::size_t Bytes() const { return sizeof(*this) + letter.image->Bytes(); }
};

KnownLetters::~KnownLetters() {
    for (const auto& slot : letters_) {
        const Kept* kept = slot.load();
        while (kept) {
            const std::unique_ptr<const Kept> last(kept);
            bytesKept -= last->Bytes();
            kept = last->before;
        }
    }
}

const KnownLetter* KnownLetters::Find(char32_t character) const {
    const Kept* kept = character < letters_.size() ? letters_[character].load() : nullptr;
    return kept && kept->generation == generation ? &kept->letter : nullptr;
}

void KnownLetters::Keep(char32_t character, const KnownLetter& letter) {
    if (Find(character) || character >= letters_.size() || letter.image->Bytes() > kLargestLetter ||
        bytesKept > kCapacityBytes) {
        return;
    }
    const Kept* before = letters_[character].load();
    auto kept = std::make_unique<const Kept>(Kept{letter, generation, before});
    if (letters_[character].compare_exchange_strong(before, kept.get())) {
        bytesKept += kept->Bytes();
        kept.release();
    }
}

void KnownLetters::ForgetAll() {
    ++generation;
}

}   // namespace rastel::platform
