// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Throws and catches across the border of the library, with hidden visibility on both sides, and
// logs, reads lengths and loads plug-ins in a module that has stream operators of its own.

#include <ovrabase/config.h>
#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/SpdlogDelegate.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/services/future.h>
#include <ovrabase/text/LengthUnits.h>

#include <QCoreApplication>
#include <QFile>
#include <QPoint>
#include <QSet>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/spdlog.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <sstream>
#include <string>

/// Where every module finds it: messages must not use it.
std::ostream &operator<<(std::ostream &out, const QString &)
{
    return out << "not this one";
}

namespace Paint {

struct Layer {
    QString name;
};

/// Where the library finds it, also for lists.
QString logStr(const Layer &layer)
{
    return QStringLiteral("layer ") + layer.name;
}

/// Where only this namespace finds it.
std::ostream &operator<<(std::ostream &out, const QPoint &point)
{
    return out << "point " << point.x() << ' ' << point.y();
}

bool check(bool holds, const char *what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
    }
    return holds;
}

struct LastMessage : Vyn::Core::Log::LogDelegate {
    void log(int, const QString &, const QString &message) override { text = message; }
    QString text;
};

/// An installed library looks for resources beside the program, not in a folder of its builder and
/// not in the current one.
bool looksForResourcesBesideTheProgram()
{
    const auto last = std::make_shared<LastMessage>();
    const Vyn::Core::Log::ScopedPushLogDelegate delegate(last);
    QFile here(QStringLiteral("here.rcc"));
    const bool isThere = here.open(QFile::WriteOnly);
    Vyn::OvraBase::registerExternalResource(here.fileName());
    return here.remove() && isThere &&
           last->text.startsWith(
               QStringLiteral("Resource file here.rcc not found in directories  and "));
}

bool logsQtValues()
{
    using Vyn::logStr;
    const auto last = std::make_shared<LastMessage>();
    const Vyn::Core::Log::ScopedPushLogDelegate delegate(last);
    const Vyn::Logger &ui = Vyn::OvraBase::logger(Vyn::OvraBase::UI);
    const QPoint point(1, 2);
    const QString name = QStringLiteral("grün");

    ui.info(LOG_CONTEXT) << name << " at " << logStr(point) << ' ' << name << QStringView(name)
                         << QLatin1String(" = ") + name << std::hex << 255;
    bool good =
        check(last->text == QStringLiteral("grün at (1,2) grüngrün = grünff"), "Qt's texts");
    ui.info(LOG_CONTEXT) << QList<Layer>{{name}, {name}} << Layer{name};
    good &= check(last->text == QStringLiteral("[layer grün, layer grün]layer grün"), "our logStr");
    ui.info(LOG_CONTEXT) << "own: " << point << std::endl;
    good &= check(last->text == QStringLiteral("own: point 1 2\n"), "our operator");
    return good;
}

bool showsWhatApplicationsHold()
{
    using Vyn::logStr;
    const QString text = QStringLiteral("a");
    const struct {
        QString shown;
        const char *expected;
    } rows[] = {
        {logStr(std::string_view("a")), "\"a\""},
        {logStr(QStringView(text)), "\"a\""},
        {logStr(QLatin1String("a")), "\"a\""},
        {logStr(std::filesystem::path("a/b")), "\"a/b\""},
        {logStr(QVariantMap{{text, 1}}), "{a: QVariant(1 as int)}"},
        {logStr(std::pair(1, text)), "(1, \"a\")"},
        {logStr(std::array{1, 2}), "[1, 2]"},
        {logStr(QSet<int>{1}), "[1]"},
        {logStr(std::map<int, QPoint>{{1, {2, 3}}}), "{1: (2,3)}"},
        {logStr(QMap<int, Layer>{{1, {text}}}), "{1: layer a}"},
    };
    bool good = true;
    for (const auto &row : rows) {
        good &= check(row.shown == QLatin1String(row.expected), qUtf8Printable(row.shown));
    }
    return good;
}

QString textOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly | QFile::Text) ? QString::fromUtf8(file.readAll()) : QString();
}

bool logsToAFileThatRotates()
{
    const QTemporaryDir folder;
    {
        const auto sink = std::make_shared<spdlog::sinks::rotating_file_sink_mt>(
            folder.filePath(QStringLiteral("app.log")).toStdString(), 100, 1);
        const auto file = std::make_shared<spdlog::logger>("file", sink);
        file->set_pattern("%l %v");
        const Vyn::Core::Log::ScopedPushLogDelegate delegate(
            std::make_shared<Vyn::Core::Log::SpdlogDelegate>(file));
        Vyn::OvraBase::logger(Vyn::OvraBase::UI).warning("old") << std::string(80, '-');
        Vyn::OvraBase::logger(Vyn::OvraBase::UI).error("new") << QStringLiteral("{grün}");
    }
    bool good = check(textOf(folder.filePath(QStringLiteral("app.1.log"))) ==
                          QStringLiteral("warning [UI: old] ") + QString(80, u'-') + u'\n',
        "the older record is in the older file");
    good &= check(textOf(folder.filePath(QStringLiteral("app.log"))) ==
                      QStringLiteral("error [UI: new] {grün}\n"),
        "the newer record is in the file");
    return good;
}

bool readsLengths()
{
    const auto is = [](const char16_t *text, double expected) {
        const auto length = Vyn::OvraBase::parseLength(
            QString::fromUtf16(text), QStringLiteral("cm"), QLocale(QLocale::German));
        return length ? std::abs(*length - expected) < 1e-9 : std::isnan(expected);
    };
    return check(is(u"12,5", 0.125) && is(u"1.250 mm", 1.25) && is(u"5′ 7″", 67 * 0.0254) &&
                     is(u"abc", NAN) && is(u"12,5 cmx", NAN),
        "the lengths that users type");
}

bool loadsPlugins()
{
    using namespace Vyn::OvraBase;
    QString error;
    void *const plugin = loadSharedLibrary(QStringLiteral("plugin.dll"), &error);
    bool good = check(plugin && error.isEmpty(), "the plug-in is loaded");
    if (!plugin) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error));
        return false;
    }
    void *const symbol = loadSymbol(plugin, QStringLiteral("answer"), &error);
    good &= check(symbol && error.isEmpty() && reinterpret_cast<int (*)()>(symbol)() == 42,
        "the plug-in answers");
    good &= check(!loadSymbol(plugin, QStringLiteral("question"), &error) && !error.isEmpty(),
        "a missing symbol has a reason");
    closeSharedLibrary(plugin);

    good &= check(!loadSharedLibrary(QStringLiteral("missing.dll"), &error) &&
                      error.contains(QStringLiteral("missing")),
        "a missing plug-in has a reason");
    QFile text(QCoreApplication::applicationDirPath() + QStringLiteral("/text.dll"));
    good &= check(text.open(QFile::WriteOnly) && text.write("text") == 4, "a text is written");
    text.close();
    error.clear();
    good &= check(!loadSharedLibrary(QStringLiteral("text.dll"), &error) && !error.isEmpty(),
        "what is no library has a reason");
    return text.remove() && good;
}

bool behaves()
{
    using namespace Vyn;
    std::ostringstream written;
    const auto sink = std::make_shared<spdlog::sinks::ostream_sink_mt>(written);
    const Core::Log::ScopedPushLogDelegate log(
        std::make_shared<Core::Log::SpdlogDelegate>(std::make_shared<spdlog::logger>("app", sink)));

    bool good = check(std::string(OVRABASE_VERSION).starts_with("6."), "the version is there");
    try {
        OvraBase::FileUtils::changeFilePathExtension(QStringLiteral("a.txt"), QString());
        good = check(false, "the library throws");
    } catch (const Exception::Exception<1, Exception::ParameterException> &caught) {
        good &= check(dynamic_cast<const Exception::InvalidArgumentException *>(&caught),
            "the class that it is thrown as");
    }
    good &= check(
        written.str().find("changeFilePathExtension()] Extension is empty.") != std::string::npos,
        "what the library logs reaches a sink of spdlog");
    try {
        throw Exception::DriveUnmountException("ours", QStringLiteral("D"));
    } catch (const Exception::IOException &caught) {
        good &= check(static_cast<const Exception::BaseException &>(caught).errorSubCode() == 10,
            "the sub-code of what we throw");
    }
    good &= check(!future<void>(future<void>::backend_type()).valid(), "the backend of futures");
    good &= check(looksForResourcesBesideTheProgram(), "resources are beside the program");
    good &= logsQtValues();
    good &= showsWhatApplicationsHold();
    good &= logsToAFileThatRotates();
    good &= readsLengths();
    good &= loadsPlugins();
    return good;
}

} // namespace Paint

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Vyn::OvraBase::bindLoggers();
    return Paint::behaves() ? 0 : 1;
}
