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

/// Makes a table that is never destroyed, because static destructors log, too.
template<class... Types>
const QHash<int, Formatter> &formattersOf()
{
    return *new QHash<int, Formatter>{{QMetaType::fromType<Types>().id(), &format<Types>}...};
}

/// Returns the function that formats a variant of the type \a type, or null for an unknown type.
/// Types that contain variants are not in the table: VariantFormatter handles them.
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

/// These three functions return the text before a value of a list, of a map, and of a hash.
QString textBefore(QVariantList::const_iterator /*value*/)
{
    return {};
}
QString textBefore(QVariantMap::const_iterator value)
{
    return u'(' + logStr(value.key()) + QStringLiteral(", ");
}
QString textBefore(QVariantHash::const_iterator value)
{
    return value.key() + QStringLiteral(": ");
}
/// True if each entry of the container is in parentheses.
template<class Container>
constexpr bool isParenthesised = std::is_same_v<Container, QVariantMap>;
/// True if the container is in braces, false if it is in brackets.
template<class Container>
constexpr bool isBraced = std::is_same_v<Container, QVariantHash>;

/// Formats a variant and the variants that are nested in it. Not recursive: the stack of a thread
/// may be too small for one call per level. The open containers are on the heap instead.
class VariantFormatter {
public:
    QString format(const QVariant &value)
    {
        write(value);
        while (!mOpen.empty()) {
            std::visit([this](auto &container) { writeNext(container); }, mOpen.back());
        }
        return std::move(mText);
    }

private:
    static constexpr std::size_t kMaxDepth = 1000;

    /// A container whose entries are being written.
    template<class Container>
    struct Open {
        typename Container::const_iterator next;
        typename Container::const_iterator end;
        bool isFirst = true;
    };

    /// Writes \a value. Of a container, writes only what comes before its first entry.
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

    /// Writes the next entry of \a container, or its end. The last statement may open another
    /// container, which moves the elements of mOpen: \a container is then invalid.
    template<class Container>
    void writeNext(Open<Container> &container)
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
        mText += textBefore(value);
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
    return VariantFormatter().format(value);
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
