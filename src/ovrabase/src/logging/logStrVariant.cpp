// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/logStr.h>

#include <QBitArray>
#include <QBitmap>
#include <QBrush>
#include <QColor>
#include <QCursor>
#include <QDateTime>
#include <QEasingCurve>
#include <QFont>
#include <QHash>
#include <QIcon>
#include <QImage>
#include <QKeySequence>
#include <QLine>
#include <QList>
#include <QLocale>
#include <QMap>
#include <QMatrix4x4>
#include <QModelIndex>
#include <QPalette>
#include <QPixmap>
#include <QPolygon>
#include <QQuaternion>
#include <QRect>
#include <QRegion>
#include <QRegularExpression>
#include <QStringList>
#include <QTransform>
#include <QUrl>
#include <QUuid>
#include <QVariant>
#include <QVector2D>
#include <QVector3D>
#include <QVector4D>

namespace Vyn {
namespace {

using Formatter = QString (*)(const QVariant &);

template<class T>
QString format(const QVariant &variant)
{
    return logStr(variant.value<T>());
}

/// A map in a variant has another form than one of its own.
template<>
QString format<QVariantMap>(const QVariant &variant)
{
    const auto map = variant.value<QVariantMap>();
    QStringList entries;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        entries += QStringLiteral("(%1, %2)").arg(logStr(entry.key()), logStr(*entry));
    }
    return u'[' + entries.join(QStringLiteral(", ")) + u']';
}

template<class Container>
QString namedVariants(const Container &values)
{
    QStringList entries;
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        entries += entry.key() + QStringLiteral(": ") + logStr(*entry);
    }
    return u'{' + entries.join(QStringLiteral(", ")) + u'}';
}

/// Makes a table that is never destroyed: services log until the very end.
template<class... Types>
const QHash<int, Formatter> &formattersOf()
{
    return *new QHash<int, Formatter>{{QMetaType::fromType<Types>().id(), &format<Types>}...};
}

} // namespace

QString logStr(const QVariant &value)
{
    static const auto &formatters = formattersOf<bool, int, uint, qlonglong, qulonglong, double,
        char, QVariantMap, QVariantList, QString, QStringList, QByteArray, QBitArray, QDate, QTime,
        QDateTime, QUrl, QLocale, QRect, QRectF, QSize, QSizeF, QLine, QLineF, QPoint, QPointF,
        QRegularExpression, QVariantHash, QEasingCurve, QUuid, QModelIndex, QPersistentModelIndex,
        QFont, QPixmap, QBrush, QColor, QPalette, QImage, QPolygon, QRegion, QBitmap, QCursor,
        QKeySequence, QTransform, QMatrix4x4, QVector2D, QVector3D, QVector4D, QQuaternion,
        QPolygonF, QIcon>();

    const Formatter formatter = formatters.value(value.typeId());
    if (!formatter && value.isNull()) {
        return QStringLiteral("QVariant(Null)");
    }
    return QStringLiteral("QVariant(%1 as %2)")
        .arg(formatter ? formatter(value) : QStringLiteral("<?>"),
            QString::fromUtf8(value.typeName()));
}

QString logStr(const QHash<QString, QVariant> &value)
{
    return namedVariants(value);
}

QString logStr(const QMap<QString, QVariant> &value)
{
    return namedVariants(value);
}

} // namespace Vyn
