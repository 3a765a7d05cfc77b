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

#include <cstddef>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace Vyn {
namespace {

using Formatter = QString (*)(const QVariant &);

template<class T>
QString format(const QVariant &variant)
{
    return logStr(variant.value<T>());
}

/// Makes a table that is never destroyed: services log until the very end.
template<class... Types>
const QHash<int, Formatter> &formattersOf()
{
    return *new QHash<int, Formatter>{{QMetaType::fromType<Types>().id(), &format<Types>}...};
}

/// Returns how a variant of \a type is written that holds no variants itself, or null.
Formatter formatterOf(int type)
{
    static const auto &formatters = formattersOf<bool, int, uint, qlonglong, qulonglong, double,
        char, QString, QStringList, QByteArray, QBitArray, QDate, QTime, QDateTime, QUrl, QLocale,
        QRect, QRectF, QSize, QSizeF, QLine, QLineF, QPoint, QPointF, QRegularExpression,
        QEasingCurve, QUuid, QModelIndex, QPersistentModelIndex, QFont, QPixmap, QBrush, QColor,
        QPalette, QImage, QPolygon, QRegion, QBitmap, QCursor, QKeySequence, QTransform, QMatrix4x4,
        QVector2D, QVector3D, QVector4D, QQuaternion, QPolygonF, QIcon>();
    return formatters.value(type);
}

/// What is written before and after a value of each container.
QString before(QVariantList::const_iterator /*value*/)
{
    return {};
}
QString before(QVariantMap::const_iterator value)
{
    return u'(' + logStr(value.key()) + QStringLiteral(", ");
}
QString before(QVariantHash::const_iterator value)
{
    return value.key() + QStringLiteral(": ");
}
template<class Container>
constexpr bool isParenthesised = std::is_same_v<Container, QVariantMap>;
template<class Container>
constexpr bool isBraced = std::is_same_v<Container, QVariantHash>;

/// Writes a variant and those that are nested in it. The containers that are open are kept on the
/// heap, as a thread's stack may be too small for a function that calls itself for each.
class Writer {
public:
    QString written(const QVariant &value)
    {
        write(value);
        while (!mOpen.empty()) {
            std::visit([this](auto &container) { goOn(container); }, mOpen.back());
        }
        return std::move(mText);
    }

private:
    static constexpr std::size_t kMaxDepth = 1000;

    template<class Container>
    struct Open {
        typename Container::const_iterator next;
        typename Container::const_iterator end;
        bool isFirst = true;
    };

    void write(const QVariant &value)
    {
        switch (const int type = value.typeId(); type) {
        case QMetaType::QVariantList:
            return open<QVariantList>(value);
        case QMetaType::QVariantMap:
            return open<QVariantMap>(value);
        case QMetaType::QVariantHash:
            return open<QVariantHash>(value);
        default:
            const Formatter formatter = formatterOf(type);
            if (!formatter && value.isNull()) {
                mText += QStringLiteral("QVariant(Null)");
                return;
            }
            mText += QStringLiteral("QVariant(");
            mText += formatter ? formatter(value) : QStringLiteral("<?>");
            close(value.typeName());
        }
    }

    template<class Container>
    void open(const QVariant &value)
    {
        if (mOpen.size() == kMaxDepth) {
            mText += u'…';
            return;
        }
        const auto &values = *static_cast<const Container *>(value.constData());
        mText += QStringLiteral("QVariant(");
        mText += isBraced<Container> ? u'{' : u'[';
        mOpen.push_back(Open<Container>{values.cbegin(), values.cend()});
    }

    /// Writes what follows in \a container, which may open another one and so move this one.
    template<class Container>
    void goOn(Open<Container> &container)
    {
        const bool isFirst = std::exchange(container.isFirst, false);
        if (isParenthesised<Container> && !isFirst) {
            mText += u')';
        }
        if (container.next == container.end) {
            mText += isBraced<Container> ? u'}' : u']';
            close(QMetaType::fromType<Container>().name());
            mOpen.pop_back();
            return;
        }
        if (!isFirst) {
            mText += QStringLiteral(", ");
        }
        const auto value = container.next++;
        mText += before(value);
        write(*value);
    }

    void close(const char *typeName)
    {
        mText += QStringLiteral(" as ") + QString::fromUtf8(typeName) + u')';
    }

    QString mText;
    std::vector<std::variant<Open<QVariantList>, Open<QVariantMap>, Open<QVariantHash>>> mOpen;
};

template<class Container>
QString namedVariants(const Container &values)
{
    QStringList entries;
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        entries += entry.key() + QStringLiteral(": ") + logStr(*entry);
    }
    return u'{' + entries.join(QStringLiteral(", ")) + u'}';
}

} // namespace

QString logStr(const QVariant &value)
{
    return Writer().written(value);
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
