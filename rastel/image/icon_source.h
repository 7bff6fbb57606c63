// Where icons come from: a whole file, or one resource of a module.
#pragma once

#include <span>

#include "rastel/platform/types.h"

namespace rastel::image {

// A file's bytes in global memory for as long as this object lives.
class FileContents {
public:
    explicit FileContents(const wchar_t* path);
    ~FileContents();
    FileContents(const FileContents&) = delete;
    FileContents& operator=(const FileContents&) = delete;

    bool WasRead() const { return bytes_ != nullptr; }   // false for an empty file and one past mostBytes, too
    std::span<const BYTE> Bytes() const { return {bytes_, size_}; }

    static constexpr LONGLONG mostBytes = 0x10000000;   // far beyond any icon; a sparse file must not eat the memory

private:
    HGLOBAL memory_ = nullptr;
    BYTE* bytes_ = nullptr;
    DWORD size_ = 0;
};

// A resource's bytes, which belong to the module and live as long as that is loaded.
class ModuleResource {
public:
    ModuleResource(HMODULE module, const wchar_t* name, const wchar_t* type);
    ~ModuleResource();
    ModuleResource(const ModuleResource&) = delete;
    ModuleResource& operator=(const ModuleResource&) = delete;

    bool IsThere() const { return bytes_ != nullptr; }
    std::span<const BYTE> Bytes() const { return {bytes_, size_}; }

private:
    HGLOBAL resource_ = nullptr;
    const BYTE* bytes_ = nullptr;
    DWORD size_ = 0;
};

const wchar_t* IconGroupType();
const wchar_t* IconType();
const wchar_t* ResourceNumber(DWORD number);   // a resource's number in place of its name

// Whether the pointer stands for a number and holds no text.
bool IsResourceNumber(const wchar_t* name);

}   // namespace rastel::image
