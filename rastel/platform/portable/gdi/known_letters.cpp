#include "rastel/platform/portable/gdi/known_letters.h"

namespace rastel::platform {

namespace {

constexpr std::size_t kLargestLetter = 4096;   // bytes

std::atomic<unsigned>& Generation() {
    static std::atomic<unsigned> generation;
    return generation;
}

}   // namespace

KnownLetters::KnownLetters() : generation_(Generation()) {}

KnownLetters::~KnownLetters() {
    for (const auto& letter : letters_) {
        delete letter.load();
    }
}

const KnownLetter* KnownLetters::Find(char32_t character) const {
    return character < letters_.size() && generation_ == Generation() ? letters_[character].load() : nullptr;
}

void KnownLetters::Keep(char32_t character, const KnownLetter& letter) {
    if (character >= letters_.size() || letter.image->Bytes() > kLargestLetter || generation_ != Generation() ||
        letters_[character].load()) {
        return;   // large, never to be found, or there already
    }
    auto kept = std::make_unique<const KnownLetter>(letter);
    const KnownLetter* none = nullptr;
    if (letters_[character].compare_exchange_strong(none, kept.get())) {
        kept.release();
    }
}

void KnownLetters::ForgetAll() {
    ++Generation();
}

}   // namespace rastel::platform
