// The export macro. The library is built with hidden symbols; what carries OVIK_API is its
// interface. A static build (OVIK_STATIC) needs no marks at all.
#pragma once

#if defined(OVIK_STATIC)
#define OVIK_API
#elif defined(_WIN32)
#if defined(OVIK_BUILDING)
#define OVIK_API __declspec(dllexport)
#else
#define OVIK_API __declspec(dllimport)
#endif
#else
#define OVIK_API __attribute__((visibility("default")))
#endif
