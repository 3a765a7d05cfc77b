// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/logStr.h>

#include <QBitmap>
#include <QBrush>
#include <QColor>
#include <QCursor>
#include <QFont>
#include <QIcon>
#include <QImage>
#include <QKeySequence>
#include <QPalette>
#include <QPixmap>
#include <QStringList>

namespace Vyn {
namespace {

QString imageOrNull(const QPaintDevice &image, bool isNull, const QString &nullText)
{
    if (isNull) {
        return nullText;
    }
    return QStringLiteral("%1x%2:%3bpp").arg(image.width()).arg(image.height()).arg(image.depth());
}

} // namespace

QString logStr(const QColor &value)
{
    return value.isValid() ? value.name() : QStringLiteral("invalid");
}

QString logStr(const QBrush &value)
{
    return value.color().isValid() ? QStringLiteral("brush with color %1").arg(value.color().name())
                                   : QStringLiteral("colorless brush");
}

QString logStr(const QPalette &value)
{
    const auto color = [&value](QPalette::ColorRole role) { return logStr(value.color(role)); };
    // "window" shows the colour of Base on purpose: log readers know this form.
    return QStringLiteral("{windowText: %1, button: %2, light: %3, dark: %4, mid: %5, text: %6, "
                          "bright_text: %7, base: %8, window: %8}")
        .arg(color(QPalette::WindowText), color(QPalette::Button), color(QPalette::Light),
            color(QPalette::Dark), color(QPalette::Mid), color(QPalette::Text),
            color(QPalette::BrightText), color(QPalette::Base));
}

QString logStr(const QFont &value)
{
    return value.toString();
}

QString logStr(const QIcon &value)
{
    if (value.isNull()) {
        return QStringLiteral("<null icon>");
    }
    if (!value.name().isEmpty()) {
        return value.name();
    }
    QStringList sizes;
    for (const QSize &size : value.availableSizes(QIcon::Normal, QIcon::Off)) {
        sizes += logStr(size);
    }
    return QStringLiteral("icon with sizes ") + sizes.join(u':');
}

QString logStr(const QKeySequence &value)
{
    return value.toString();
}

QString logStr(const QImage &value)
{
    return imageOrNull(value, value.isNull(), QStringLiteral("<null image>"));
}

QString logStr(const QBitmap &value)
{
    return imageOrNull(value, value.isNull(), QStringLiteral("<null bitmap>"));
}

QString logStr(const QPixmap &value)
{
    return imageOrNull(value, value.isNull(), QStringLiteral("null"));
}

QString logStr(const QCursor &value)
{
    const QPixmap bitmap = value.bitmap();
    const QPoint position = QCursor::pos();
    return QStringLiteral("%1 cursor at (%2, %3)")
        .arg(logStr(bitmap))
        .arg(position.x())
        .arg(position.y());
}

} // namespace Vyn
