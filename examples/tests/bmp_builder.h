// BMP files for tests, byte by byte.
#pragma once

#include <cstdint>
#include <vector>

namespace rastel::example {

class BmpBuilder {
public:
    std::int32_t width = 2, height = 2;
    int bits = 24;
    std::uint32_t compression = 0;
    std::vector<std::uint32_t> palette, masks;
    std::vector<unsigned char> rows;   // in the file's order, padded

    std::vector<unsigned char> Bytes() const {
        std::vector<unsigned char> bytes = {'B', 'M'};
        const auto first = static_cast<std::uint32_t>(54 + 4 * (palette.size() + masks.size()));
        for (const std::uint32_t field :
             {std::uint32_t{0}, std::uint32_t{0}, first, std::uint32_t{40}, static_cast<std::uint32_t>(width),
              static_cast<std::uint32_t>(height), static_cast<std::uint32_t>(bits) << 16 | 1u, compression,
              std::uint32_t{0}, std::uint32_t{0}, std::uint32_t{0}, static_cast<std::uint32_t>(palette.size()),
              std::uint32_t{0}}) {
            Append(bytes, field);
        }
        for (const std::vector<std::uint32_t>* const table : {&masks, &palette}) {
            for (const std::uint32_t entry : *table) {
                Append(bytes, entry);
            }
        }
        bytes.insert(bytes.end(), rows.begin(), rows.end());
        return bytes;
    }

private:
    static void Append(std::vector<unsigned char>& bytes, std::uint32_t field) {
        for (int shift = 0; shift < 32; shift += 8) {
            bytes.push_back(static_cast<unsigned char>(field >> shift));
        }
    }
};

}   // namespace rastel::example
