// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "FreeImage.h"

#include <cstring>
#include <string>

/// The names and extensions of the formats of FreeImage 3.18.
constexpr char kKnown[] =
    " bmp ico jpeg jpg jif jpe jng koala koa iff lbm mng pbm pbmraw pcd pcx pgm pgmraw png ppm "
    "ppmraw ras targa tga tiff tif wbmp wap wbm psd psb cut xbm xpm dds gif hdr g3 sgi rgb rgba bw "
    "exr j2k j2c jp2 pfm pict pct pic raw 3fr arw bay bmq cap cine cr2 crw cs1 dc2 dcr drf dsc dng "
    "erf fff ia iiq k25 kc2 kdc mdc mef mos mrw nef nrw orf pef ptx pxn qtk raf rdc rw2 rwl rwz "
    "sr2 srf srw sti x3f webp jpeg-xr jxr wdp hdp ";

FREE_IMAGE_FORMAT FreeImage_GetFIFFromFilename(const char *filename)
{
    std::string word = filename;
    word.erase(0, word.rfind('.') + 1);
    ::_strlwr(word.data());
    const bool isWord = !word.empty() && word.find(' ') == std::string::npos;
    return isWord && std::strstr(kKnown, (' ' + word + ' ').c_str()) ? FIF_KNOWN : FIF_UNKNOWN;
}
