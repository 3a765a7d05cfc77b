// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

namespace Vyn::Test {
namespace {

using FileKinds = FolderTest;

TEST_F(FileKinds, ClassifyExtensions)
{
    using Exts = std::vector<const char *>;
    const Rows<bool (*)(const QString &), Exts, Exts> rows{
        {"mesh", isMeshExt, {"usd", "usda", "usdc", "usdz", "obj", "fbx", "gltf", "GLB"},
            {"", ".obj", "objx"}},
        {"slvar", isSLVARExt, {"SLVar"}, {"", "slva"}},
        {"filter", isVSKFilterExt, {"vskfilter", "OvraFilter"}, {"filter"}},
        {"quick action", isQuickActionExt, {"OVQA"}, {"ovq"}},
        {"supported", isImageFormatSupported, {"png", "DNG", "Nef", ""}, {"dng", "nef"}},
        {"image", isImageExt, {"png", "JPG", "jpeg", "tif", "exr", "cr2", "SVG"},
            {"", "txt", "dng", "DNG", "Nef", "svgz", "png\xE4\xB8\xAD"}},
    };
    forEach(rows, [](auto is, const Exts &known, const Exts &others) {
        for (const char *ext : known) {
            EXPECT_TRUE(is(QString::fromUtf8(ext))) << ext;
        }
        for (const char *ext : others) {
            EXPECT_FALSE(is(QString::fromUtf8(ext))) << ext;
        }
    });
}

} // namespace
} // namespace Vyn::Test
