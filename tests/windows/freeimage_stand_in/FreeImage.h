// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// A stand-in for FreeImage in the tests for Windows, because there is no package of FreeImage for
/// MinGW. It has the one function that the library calls, which tells formats by extension, and
/// reads no image. A released library loads the real FreeImage.

#pragma once

#define FREEIMAGE_MAJOR_VERSION 3
#define FREEIMAGE_MINOR_VERSION 18

enum FREE_IMAGE_FORMAT : int { FIF_UNKNOWN = -1, FIF_KNOWN = 0 };

/// Returns FIF_KNOWN where the text after the last dot of \a filename (all of it when there is
/// none) is the extension or the name of a format, in any letter case, else FIF_UNKNOWN.
extern "C" FREE_IMAGE_FORMAT FreeImage_GetFIFFromFilename(const char *filename);
