#pragma once
// The library is built with its symbols hidden: only the classes marked
// QUILLON_API, those of its installed headers, are exported.
#if defined(__GNUC__)
#define QUILLON_API __attribute__((visibility("default")))
#else
#define QUILLON_API
#endif
