#include <algorithm>

#include "gdi_test_support.h"
#include "rastel/platform/portable/gdi/pick_plan.h"
#include "rastel/platform/portable/gdi/row_kernels.h"

namespace rastel::test {
namespace {

using platform::AllRowKernels;
using platform::RowKernels;

struct Conversion {
    const char* name;
    RowKernels::ConvertRow RowKernels::*row;
    const Format& from;
    const Format& to;
};

const Conversion kConversions[] = {
    {"32 to 24", &RowKernels::from32To24, kFormats[7], kFormats[6]},
    {"24 to 32", &RowKernels::from24To32, kFormats[6], kFormats[7]},
    {"32 to 565", &RowKernels::from32To565, kFormats[7], kFormats[4]},
    {"32 to 555", &RowKernels::from32To555, kFormats[7], kFormats[3]},
    {"565 to 32", &RowKernels::from565To32, kFormats[4], kFormats[7]},
    {"555 to 32", &RowKernels::from555To32, kFormats[3], kFormats[7]},
};

std::vector<unsigned char> RandomBytes(std::size_t count) {
    std::vector<unsigned char> bytes(count);
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(Random()());
    }
    return bytes;
}

// Rows end exactly where their heap block ends, so that reading too far is seen under a sanitizer.
TEST(RowKernels, EveryFormEqualsTheConversionByTheBook) {
    for (const RowKernels* kernels : AllRowKernels()) {
        if (!kernels->runsHere()) {
            continue;
        }
        for (const Conversion& conversion : kConversions) {
            const std::size_t fromBytes = static_cast<std::size_t>(conversion.from.depth) / 8;
            const std::size_t toBytes = static_cast<std::size_t>(conversion.to.depth) / 8;
            for (int width = 0; width <= 70; ++width) {
                const std::size_t shift = static_cast<std::size_t>(RandomIn(0, 15));
                const auto count = static_cast<std::size_t>(width);
                std::vector<unsigned char> source = RandomBytes(shift + count * fromBytes);
                std::vector<unsigned char> target(shift + count * toBytes, 0xA5);
                (kernels->*conversion.row)(source.data() + shift, target.data() + shift, width);
                Section from(71, 1, conversion.from);
                Section to(71, 1, conversion.to);
                std::copy(source.data() + shift, source.data() + source.size(), from.Bits());
                std::copy(target.data() + shift, target.data() + target.size(), to.Bits());
                for (int x = 0; x < width; ++x) {
                    ASSERT_EQ(to.Raw(x, 0), to.RawOf(from.Color(x, 0)))
                        << kernels->name << ", " << conversion.name << ", width " << width << " at " << x;
                }
                for (std::size_t i = 0; i < shift; ++i) {
                    ASSERT_EQ(target[i], 0xA5);
                }
            }
        }
    }
}

TEST(RowKernels, GreyIsTheRoundedMeanOfEverySum) {
    std::vector<unsigned char> source(766 * 4);
    for (unsigned sum = 0; sum < 766; ++sum) {
        for (unsigned channel = 0; channel < 3; ++channel) {
            source[sum * 4 + channel] = static_cast<unsigned char>((sum + channel) / 3);
        }
        source[sum * 4 + 3] = 0xFF;
    }
    for (const RowKernels* kernels : AllRowKernels()) {
        std::vector<unsigned char> target(766);
        if (kernels->runsHere()) {
            kernels->from32ToGrey(source.data(), target.data(), 766);
            for (unsigned sum = 0; sum < 766; ++sum) {
                ASSERT_EQ(target[sum], (2 * sum + 3) / 6) << kernels->name;
            }
        }
    }
}

// False: such a row is not planned, and the target is untouched.
bool PickByPlan(const RowKernels& kernels, const std::vector<unsigned char>& source, const std::vector<int>& columns,
                int bytes, unsigned char* target) {
    const auto count = static_cast<int>(columns.size());
    const auto sourceBytes = static_cast<int>(source.size());
    if (bytes == 4) {
        platform::PickPlan32 plan;
        if (plan.Make(columns.data(), count, sourceBytes / 4)) {
            kernels.pick32(source.data(), plan, target);
            return true;
        }
        return false;
    }
    platform::PickPlan plan;
    if (plan.Make(columns.data(), count, bytes, sourceBytes)) {
        kernels.pick(source.data(), plan, target);
        return true;
    }
    return false;
}

TEST(RowKernels, PickedBytesAreThoseOfTheColumns) {
    for (const RowKernels* kernels : AllRowKernels()) {
        if (!kernels->runsHere() || kernels->pick == nullptr || kernels->pick32 == nullptr) {
            continue;
        }
        int planned = 0;
        for (int round = 0; round < 3000; ++round) {
            const int bytes = RandomIn(1, 4);
            const int width = RandomIn(1, 90);
            const int sourceWidth = RandomIn(0, 3) == 0 ? 2 * width : RandomIn(1, 300);
            const bool mirrored = RandomIn(0, 1) == 1;
            std::vector<int> columns;
            for (int i = 0; i < width; ++i) {
                columns.push_back((mirrored ? width - 1 - i : i) * sourceWidth / width);
            }
            const std::vector<unsigned char> source = RandomBytes(static_cast<std::size_t>(sourceWidth * bytes));
            std::vector<unsigned char> target(static_cast<std::size_t>(width * bytes));
            if (!PickByPlan(*kernels, source, columns, bytes, target.data())) {
                continue;
            }
            ++planned;
            for (int i = 0; i < width * bytes; ++i) {
                const int from = columns[static_cast<std::size_t>(i / bytes)] * bytes + i % bytes;
                ASSERT_EQ(target[static_cast<std::size_t>(i)], source[static_cast<std::size_t>(from)])
                    << kernels->name << ", " << bytes << " bytes, " << sourceWidth << " to " << width << " at " << i;
            }
        }
        EXPECT_GT(planned, 1000);
    }
}

// All levels of coverage on all channels, over narrow and wide rows, in rows that end where their heap block ends.
TEST(RowKernels, MixedPixelsAreTheRoundedMeans) {
    for (const RowKernels* kernels : AllRowKernels()) {
        for (int width = 1; kernels->runsHere() && width <= 40; ++width) {
            const int height = 20, pitch = width + RandomIn(0, 3);
            const auto count = static_cast<std::size_t>((height - 1) * pitch + width);
            std::vector<unsigned char> coverage = RandomBytes(count);
            for (unsigned char& share : coverage) {
                share = RandomIn(0, 3) == 0 ? static_cast<unsigned char>(255 * RandomIn(0, 1)) : share;
            }
            const std::vector<unsigned char> before = RandomBytes(count * 4);
            std::vector<unsigned char> target = before;
            const DWORD color = static_cast<DWORD>(Random()()) & 0xFFFFFF;
            kernels->mix(target.data(), std::ptrdiff_t{4} * pitch, coverage.data(), pitch, width, height, color);
            for (std::size_t i = 0; i < count * 4; ++i) {
                const std::size_t pixel = i / 4, column = pixel % static_cast<std::size_t>(pitch);
                const unsigned share = column < static_cast<std::size_t>(width) ? coverage[pixel] : 0;
                const unsigned channel = color >> 8 * (i % 4) & 0xFF;
                const unsigned mean = (channel * share + before[i] * (255 - share) + 127) / 255;
                const unsigned expected = share == 0 ? before[i] : i % 4 == 3 ? 0 : mean;
                ASSERT_EQ(target[i], expected) << kernels->name << ", width " << width << " at " << i;
            }
        }
    }
}

}   // namespace
}   // namespace rastel::test
