// A file that a test makes and that goes with it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "rastel/platform/framework/characters.h"
#include "tests/image/icon_bytes.h"

namespace rastel::test {

class TemporaryFile {
public:
    explicit TemporaryFile(const ByteVector& bytes, const std::string& ending = ".ico") {
        static int count = 0;
        const auto* const test = ::testing::UnitTest::GetInstance();
        path_ = std::filesystem::temp_directory_path() /
                ("rastel-image-" + std::to_string(test->random_seed()) + "-" + std::to_string(test->start_timestamp()) +
                 "-" + std::to_string(++count) + ending);
        Write(bytes);
    }
    ~TemporaryFile() {
        std::error_code failure;
        std::filesystem::remove(path_, failure);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void Write(const ByteVector& bytes) const {
        std::ofstream stream(path_, std::ios::binary | std::ios::trunc);
        stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    const std::filesystem::path& Path() const { return path_; }
    std::wstring Name() const {
        const std::u8string utf8 = path_.u8string();   // the path's own conversion asks the locale
        std::string_view rest(reinterpret_cast<const char*>(utf8.data()), utf8.size());
        std::wstring name;
        for (char32_t code = 0; !rest.empty();) {
            platform::TakeUtf8(rest, code);
            platform::AppendWide(name, code);
        }
        return name;
    }

private:
    std::filesystem::path path_;
};

}   // namespace rastel::test
