// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(FileKinds, ClassifiesExtensions)
{
    struct Kind {
        const char *name;
        bool (*is)(const QString &);
        std::vector<const char *> yes, no;
    } const kinds[] = {
        {"mesh", FileUtils::isMeshExt, {"usd", "usda", "usdc", "usdz", "obj", "fbx", "gltf", "GLB"},
            {"", ".obj", "objx"}},
        {"slvar", FileUtils::isSLVARExt, {"slvar", "SLVar"}, {"", "slva"}},
        {"filter", FileUtils::isVSKFilterExt, {"vskfilter", "OvraFilter"}, {"filter"}},
        {"quick action", FileUtils::isQuickActionExt, {"ovqa", "OVQA"}, {"ovq"}},
        {"supported", FileUtils::isImageFormatSupported, {"png", "DNG", "Nef", ""}, {"dng", "nef"}},
        {"image", FileUtils::isImageExt, {"png", "JPG", "jpeg", "tif", "exr", "cr2", "svg", "SVG"},
            {"", "txt", "dng", "DNG", "Nef", "svgz", "png\xE4\xB8\xAD"}},
    };
    for (const Kind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        for (const char *ext : kind.yes) {
            EXPECT_TRUE(kind.is(text(ext))) << ext;
        }
        for (const char *ext : kind.no) {
            EXPECT_FALSE(kind.is(text(ext))) << ext;
        }
    }
}

} // namespace
} // namespace Vyn::OvraBase
