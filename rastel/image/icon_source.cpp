#include "rastel/image/icon_source.h"

#include "rastel/platform/kernel.h"

namespace rastel::image {

FileContents::FileContents(const wchar_t* path) {
    if (!path || IsResourceNumber(path)) {
        return;
    }
    const HANDLE file =
        ::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return;
    }
    LARGE_INTEGER size = {};
    if (::GetFileSizeEx(file, &size) && size.QuadPart > 0 && size.QuadPart <= mostBytes) {
        memory_ = ::GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(size.QuadPart));
    }
    if (memory_) {
        bytes_ = static_cast<BYTE*>(::GlobalLock(memory_));
    }
    if (bytes_ && !::ReadFile(file, bytes_, static_cast<DWORD>(size.QuadPart), &size_, nullptr)) {
        size_ = 0;
    }
    ::CloseHandle(file);
}

FileContents::~FileContents() {
    if (bytes_) {
        ::GlobalUnlock(memory_);
    }
    if (memory_) {
        ::GlobalFree(memory_);
    }
}

ModuleResource::ModuleResource(HMODULE module, const wchar_t* name, const wchar_t* type) {
    const HRSRC found = ::FindResourceW(module, name, type);
    if (!found) {
        return;
    }
    resource_ = ::LoadResource(module, found);
    if (resource_) {
        bytes_ = static_cast<const BYTE*>(::LockResource(resource_));
    }
    if (bytes_) {
        size_ = ::SizeofResource(module, found);
    }
}

ModuleResource::~ModuleResource() {
    if (resource_) {
        ::FreeResource(resource_);
    }
}

const wchar_t* IconGroupType() {
    return ResourceNumber(14);
}

const wchar_t* IconType() {
    return ResourceNumber(3);
}

const wchar_t* ResourceNumber(DWORD number) {
    return MAKEINTRESOURCEW(number);
}

bool IsResourceNumber(const wchar_t* name) {
    return reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF;
}

}   // namespace rastel::image
