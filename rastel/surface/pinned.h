// A constant that stays where it is, in a register or in memory. Compilers like to make a vector's constants anew, from
// several instructions, wherever they are used.
#pragma once

namespace rastel::kernels {

// Internal to each file that includes it, as in texel_walk.h.
namespace {

template <class V>
inline V Pinned(V constant) {
#if defined(__GNUC__)
    asm("" : "+x"(constant));
#endif
    return constant;
}

}   // namespace

}   // namespace rastel::kernels
