// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Runs where the loader finds an empty file instead of FreeImage. The process ends with 0 if svg is
// the only image extension and one warning is logged.

#include "support/RecordedLog.h"
#include "support/Require.h"

#include <ovrabase/files/FileUtils.h>

#include <QString>

using Vyn::OvraBase::FileUtils;
using Vyn::Test::require;

namespace {

/// Asks for an extension while the warning is delivered.
struct Asking : Vyn::Core::Log::LogDelegate {
    void log(int, const QString &, const QString &) override
    {
        require(!FileUtils::isImageExt(QStringLiteral("jpg")), "jpg is unknown");
    }
};

} // namespace

int main()
{
    const Vyn::Test::RecordedLog log;
    const Vyn::Core::Log::ScopedPushLogDelegate asking(std::make_shared<Asking>());
    require(!FileUtils::isImageExt(QStringLiteral("png")), "png is unknown");
    require(FileUtils::isImageExt(QStringLiteral("SVG")), "svg is known");
    const auto records = log.records();
    require(records.size() == 1 && records[0].level == 1, "one warning is logged");
    require(records[0].context.starts_with("Support: "), "Support logs the warning");
    require(records[0].message.find("freeimage") != std::string::npos, "it names the library");
}
