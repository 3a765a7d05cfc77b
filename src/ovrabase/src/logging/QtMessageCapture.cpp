// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/LogManager.h>

#include <QStringBuilder>

namespace Vyn::Core::Log {
namespace {

/// Turns Qt's messages into records of the manager.
class QtMessageCapture {
public:
    static QtMessageCapture &instance()
    {
        static auto &capture = *new QtMessageCapture; // Qt speaks during static destruction too
        return capture;
    }

    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        instance().forward(type, QString::fromUtf8(context.file) % u'(' %
                                     QString::number(context.line) % u"): " % message);
    }

    void setMask(int mask)
    {
        const QMutexLocker lock(&mMutex);
        mMask = mask;
    }

private:
    struct Route {
        int level;
        int bit;
    };

    static Route routeOf(QtMsgType type)
    {
        switch (type) {
        case QtWarningMsg:
            return {1, 1};
        case QtCriticalMsg:
            return {2, 2};
        case QtFatalMsg:
            return {2, 3};
        case QtInfoMsg:
            return {0, 4};
        default:
            return {0, 0};
        }
    }

    void forward(QtMsgType type, const QString &text)
    {
        const Route route = routeOf(type);
        QMutexLocker lock(&mMutex);
        const bool wanted = (mMask >> route.bit & 1) != 0;
        const QString name = mName;
        // A delegate that makes Qt speak must not wait for a thread that waits for the delegate.
        lock.unlock();
        if (wanted) {
            LogManager::instance()->log(route.level, name, text);
        }
    }

    QRecursiveMutex mMutex;
    QString mName = QStringLiteral("Default");
    int mMask = 0x1e;
};

} // namespace

QtMessageHandler installQtMessageHandler()
{
    QtMessageCapture::instance();
    return qInstallMessageHandler(&QtMessageCapture::handle);
}

void setQtMessageMask(int mask)
{
    QtMessageCapture::instance().setMask(mask);
}

} // namespace Vyn::Core::Log
