// The exchange of images with the host is not offered yet: every operation refuses and leaves both sides as they are.
#include "rastel/image/dib.h"
#include "rastel/image/dib_section.h"

namespace winext {

CDib* CDib::Assign(const CDib&) {
    return nullptr;
}

int CDib::LoadGlobal(HGLOBAL) {
    return 0;
}

int CDib::Attach(BITMAPINFO*, unsigned char*) {
    return 0;
}

int CDib::Detach(BITMAPINFO**, unsigned char**) {
    return 0;
}

int CDib::MoveTo(CDib&) {
    return 0;
}

HGLOBAL CDib::CreateGlobal() {
    return nullptr;
}

Gdiplus::Bitmap* CDib::CreateBitmap() {
    return nullptr;
}

CDib* CDibSection::Assign(const CDib&) {
    return nullptr;
}

int CDibSection::LoadGlobal(HGLOBAL) {
    return 0;
}

int CDibSection::Attach(BITMAPINFO*, unsigned char*) {
    return 0;
}

int CDibSection::Detach(BITMAPINFO**, unsigned char**) {
    return 0;
}

int CDibSection::MoveTo(CDib&) {
    return 0;
}

CDibSection* CDibSection::Assign(const CDibSection&) {
    return nullptr;
}

int CDibSection::CopyDib(CDib&) {
    return 0;
}

int CDibSection::AttachBitmap(HBITMAP) {
    return 0;
}

HBITMAP CDibSection::DetachBitmap() {
    return nullptr;
}

int CDibSection::LoadIconImage(HMODULE, const wchar_t*, int, int, int) {
    return 0;
}

}   // namespace winext
