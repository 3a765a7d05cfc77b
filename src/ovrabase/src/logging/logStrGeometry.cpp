// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/logStr.h>

#include <QEasingCurve>
#include <QLine>
#include <QMatrix4x4>
#include <QPoint>
#include <QPolygon>
#include <QQuaternion>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <QStringList>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>
#include <QVector4D>

namespace Vyn {
namespace {

QString number(int value)
{
    return QString::number(value);
}

QString number(double value)
{
    return QString::number(value);
}

template<class... Numbers>
QString fill(const QString &format, Numbers... numbers)
{
    return format.arg(number(numbers)...);
}

template<class Point>
QString point(const Point &value)
{
    return fill(QStringLiteral("(%1,%2)"), value.x(), value.y());
}

template<class Size>
QString size(const Size &value)
{
    return fill(QStringLiteral("%1x%2"), value.width(), value.height());
}

template<class Rect>
QString rect(const Rect &value)
{
    return fill(
        QStringLiteral("(%1x%2)wh(%3x%4)"), value.x(), value.y(), value.width(), value.height());
}

template<class Line>
QString line(const Line &value)
{
    return point(value.p1()) + QStringLiteral("--") + point(value.p2());
}

template<class Range>
QString joined(const Range &values, const QString &separator)
{
    QStringList texts;
    for (const auto &value : values) {
        texts += logStr(value);
    }
    return texts.join(separator);
}

} // namespace

QString logStr(const QPoint &value)
{
    return point(value);
}

QString logStr(const QPointF &value)
{
    return point(value);
}

QString logStr(const QSize &value)
{
    return size(value);
}

QString logStr(const QSizeF &value)
{
    return size(value);
}

QString logStr(const QRect &value)
{
    return rect(value);
}

QString logStr(const QRectF &value)
{
    return rect(value);
}

QString logStr(const QLine &value)
{
    return line(value);
}

QString logStr(const QLineF &value)
{
    return line(value);
}

QString logStr(const QPolygon &value)
{
    return joined(value, QStringLiteral("--"));
}

QString logStr(const QPolygonF &value)
{
    return joined(value, QStringLiteral("--"));
}

QString logStr(const QRegion &value)
{
    return joined(value, QStringLiteral(" U "));
}

QString logStr(const QEasingCurve &value)
{
    return joined(value.toCubicSpline(), QStringLiteral("--"));
}

QString logStr(const QVector2D &value)
{
    return point(value);
}

QString logStr(const QVector3D &value)
{
    return fill(QStringLiteral("(%1,%2,%3)"), value.x(), value.y(), value.z());
}

QString logStr(const QVector4D &value)
{
    return fill(QStringLiteral("(%1,%2,%3,%4)"), value.x(), value.y(), value.z(), value.w());
}

QString logStr(const QQuaternion &value)
{
    return fill(
        QStringLiteral("%1 + %2i + %3j + %4k"), value.scalar(), value.x(), value.y(), value.z());
}

QString logStr(const QMatrix4x4 &value)
{
    QStringList rows;
    for (int row = 0; row < 4; ++row) {
        rows += fill(QStringLiteral("[%1,%2,%3,%4]"), value(row, 0), value(row, 1), value(row, 2),
            value(row, 3));
    }
    return u'[' + rows.join(u',') + u']';
}

QString logStr(const QTransform &value)
{
    return fill(QStringLiteral("[[%1,%4,%7],[%2,%5,%8],[%3,%6,%9]]^t"), value.m11(), value.m12(),
        value.m13(), value.m21(), value.m22(), value.m23(), value.m31(), value.m32(), value.m33());
}

} // namespace Vyn
