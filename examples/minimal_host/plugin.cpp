// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// The plug-in that minimal_host loads: one function with a C name.

#ifdef _WIN32
#define PLUGIN_EXPORT __declspec(dllexport)
#else
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

/// Returns the price of a picture frame of that \a width in metres.
extern "C" PLUGIN_EXPORT double priceOfFrame(double width)
{
    return 10 + 5 * width;
}
