// A fuzzer's input as a file that never touches a disk.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace rastel::fuzz {

class InputFile {
public:
    InputFile(const std::uint8_t* bytes, std::size_t count) : file_(::memfd_create("input", MFD_CLOEXEC)) {
        for (std::size_t done = 0; done < count;) {
            const ssize_t written = ::write(file_, bytes + done, count - done);
            if (written <= 0) {
                std::abort();
            }
            done += static_cast<std::size_t>(written);
        }
    }
    ~InputFile() { ::close(file_); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    std::wstring Name() const { return L"/proc/self/fd/" + std::to_wstring(file_); }

private:
    int file_;
};

}   // namespace rastel::fuzz
