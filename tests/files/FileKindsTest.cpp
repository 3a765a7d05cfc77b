// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/files/FileUtils.h>

#include <gtest/gtest.h>

namespace Vyn::OvraBase {
namespace {

TEST(FileKinds, ClassifyExtensions)
{
    struct Kind {
        const char *name;
        bool (*is)(const QString &);
        std::vector<const char *> yes, no;
    } const kinds[] = {
        {"mesh", FileUtils::isMeshExt, {"usd", "usda", "usdc", "usdz", "obj", "fbx", "gltf", "GLB"},
            {"", ".obj", "objx"}},
        {"slvar", FileUtils::isSLVARExt, {"SLVar"}, {"", "slva"}},
        {"filter", FileUtils::isVSKFilterExt, {"vskfilter", "OvraFilter"}, {"filter"}},
        {"quick action", FileUtils::isQuickActionExt, {"OVQA"}, {"ovq"}},
        {"supported", FileUtils::isImageFormatSupported, {"png", "DNG", "Nef", ""}, {"dng", "nef"}},
        {"image", FileUtils::isImageExt, {"png", "JPG", "jpeg", "tif", "exr", "cr2", "SVG"},
            {"", "txt", "dng", "DNG", "Nef", "svgz", "png\xE4\xB8\xAD"}},
    };
    for (const Kind &kind : kinds) {
        for (const bool expected : {false, true}) {
            for (const char *ext : expected ? kind.yes : kind.no) {
                EXPECT_EQ(kind.is(QString::fromUtf8(ext)), expected) << kind.name << ": " << ext;
            }
        }
    }
}

} // namespace
} // namespace Vyn::OvraBase
