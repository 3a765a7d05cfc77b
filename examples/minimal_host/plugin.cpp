// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// The plug-in that minimal_host loads: one function with C linkage.

#ifdef _WIN32
#define PLUGIN_EXPORT __declspec(dllexport)
#else
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

/// Returns the price of a picture frame that is \a width metres wide.
extern "C" PLUGIN_EXPORT double priceOfFrame(double width)
{
    return 10 + 5 * width;
}
