// What the shared library shows to its host. Everything else stays hidden, so that two copies of a helper in
// one process never meet.
#pragma once

#if defined(RASTEL_STATIC)
#define RASTEL_API
#elif defined(_WIN32)
#if defined(RASTEL_BUILDING)
#define RASTEL_API __declspec(dllexport)
#else
#define RASTEL_API __declspec(dllimport)
#endif
#else
#define RASTEL_API __attribute__((visibility("default")))
#endif
