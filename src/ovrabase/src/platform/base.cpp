// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"
#include "platform/SharedLibrary_p.h"

#include <ovrabase/config.h>
#include <ovrabase/platform/base.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QResource>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNoLibrary{"base.cpp:92 Vyn::OvraBase::loadSharedLibrary()"};
constexpr LogPosition kBoundFromDevelopment{
    "base.cpp:157 Vyn::OvraBase::registerExternalResource()"};
constexpr LogPosition kBoundFromInstallation{
    "base.cpp:162 Vyn::OvraBase::registerExternalResource()"};
constexpr LogPosition kNoResource{"base.cpp:166 Vyn::OvraBase::registerExternalResource()"};

// Never destroyed: services of the ServiceLocator may use it in their destructors, at the end of
// the process.
const QString &kSharedLibraryExtension = *new QString(QStringLiteral(".dll"));

/// Returns the files in the application's folder that match a pattern, sorted by name. The pattern
/// is the file name in \a name up to its second dot, followed by "*".
QFileInfoList libraryFiles(const QString &name)
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString fileName = QFileInfo(name).fileName();
    // Without an application object, the path of the folder is empty, and QDir would list the
    // current folder. If the name were empty, every file would match.
    if (folder.isEmpty() || fileName.isEmpty()) {
        return {};
    }
    const QStringList parts = fileName.split(QLatin1Char('.'));
    const QString pattern = parts.mid(0, 2).join(QLatin1Char('.')) + QLatin1Char('*');
    return QDir(folder).entryInfoList({pattern}, QDir::Files);
}

/// Registers the file at \a path and logs \a origin and the result at \a position.
bool bindResource(const LogPosition &position, const QString &fileName, const QString &path,
    const QString &origin)
{
    const bool bound = QResource::registerResource(path);
    logAt(position, Debug, Logger::Info,
        QStringLiteral("External resource %1 bound from %2: %3")
            .arg(fileName, origin, bound ? QStringLiteral("true") : QStringLiteral("false")));
    return bound;
}

} // namespace

QString applicationName()
{
    return QStringLiteral("Tessik");
}

QString applicationSulvaneName()
{
    return QStringLiteral("Sulvane 3D ") + applicationName();
}

QString applicationArdelName()
{
    return QStringLiteral("Ardel ") + applicationSulvaneName();
}

QString applicationLicenseName()
{
    return applicationName();
}

QString getApplicationVersionString()
{
    return QStringLiteral("%1.%2.%3")
        .arg(OVRABASE_VERSION_MAJOR)
        .arg(OVRABASE_VERSION_MINOR)
        .arg(OVRABASE_VERSION_PATCH);
}

QString getCurrentUserName()
{
    const QByteArray user = qgetenv("USER");
    return QString::fromLocal8Bit(user.isEmpty() ? qgetenv("USERNAME") : user);
}

const QString &getSharedLibraryExtension()
{
    return kSharedLibraryExtension;
}

void *loadSharedLibrary(const QString &name)
{
    return loadSharedLibrary(name, nullptr);
}

void *loadSharedLibrary(const QString &name, QString *error)
{
    QString reason;
    void *library = nullptr;
    const QFileInfoList matches = libraryFiles(name);
    if (matches.isEmpty()) {
        reason = QStringLiteral("Failed to retrieve dynamic library: ") + name;
        logAt(kNoLibrary, Debug, Logger::Error, reason);
    } else {
        library = os::openLibrary(matches.first().absoluteFilePath(), reason);
    }
    if (error) {
        *error = reason;
    }
    return library;
}

void *loadSymbol(void *library, const QString &symbol)
{
    return loadSymbol(library, symbol, nullptr);
}

void *loadSymbol(void *library, const QString &symbol, QString *error)
{
    QString reason;
    void *address = nullptr;
    if (library) {
        address = os::findSymbol(library, symbol.toStdString().c_str(), reason);
    } else {
        reason = QStringLiteral("No library to find %1 in").arg(symbol);
    }
    if (error) {
        *error = reason;
    }
    return address;
}

void closeSharedLibrary(void *library)
{
    if (library) {
        os::closeLibrary(library);
    }
}

bool registerExternalResource(const QString &fileName)
{
    const QString development = QStringLiteral(OVRABASE_DEV_RESOURCE_DIR);
    const QString application = QCoreApplication::applicationDirPath();
    const QString installation = QDir(application).filePath(QStringLiteral("Resources"));
    const QString developmentFile = QDir(development).filePath(fileName);
    const QString installedFile = QDir(installation).filePath(fileName);

    // QDir would take an empty path for the current folder.
    if (!development.isEmpty() && QFileInfo(developmentFile).isFile()) {
        return bindResource(
            kBoundFromDevelopment, fileName, developmentFile, QStringLiteral("dev environment"));
    }
    if (!application.isEmpty() && QFileInfo(installedFile).isFile()) {
        return bindResource(
            kBoundFromInstallation, fileName, installedFile, QStringLiteral("installed file"));
    }
    logAt(kNoResource, Debug, Logger::Warning,
        QStringLiteral("Resource file %1 not found in directories %2 and %3")
            .arg(fileName, development, installation));
    return false;
}

bool registerExternalResource(const std::vector<QString> &fileNames)
{
    bool all = true;
    for (const QString &fileName : fileNames) {
        all = registerExternalResource(fileName) && all;
    }
    return all;
}

} // namespace Vyn::OvraBase
