// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>
#include <QStringView>
#include <QtContainerFwd>

#include <array>
#include <concepts>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

QT_BEGIN_NAMESPACE
class QBitArray;
class QBitmap;
class QBrush;
class QByteArray;
class QColor;
class QCursor;
class QDate;
class QDateTime;
class QEasingCurve;
class QFont;
class QIcon;
class QImage;
class QKeySequence;
class QLine;
class QLineF;
class QLocale;
class QMatrix4x4;
class QModelIndex;
class QPalette;
class QPersistentModelIndex;
class QPixmap;
class QPoint;
class QPointF;
class QPolygon;
class QPolygonF;
class QQuaternion;
class QRect;
class QRectF;
class QRegion;
class QRegularExpression;
class QSize;
class QSizeF;
class QTime;
class QTransform;
class QUrl;
class QUuid;
class QVariant;
template<class A, class B>
class QStringBuilder;
class QVector2D;
class QVector3D;
class QVector4D;
QT_END_NAMESPACE

/// \file
/// logStr() returns the short text for a value in a log message. The form of the text does not
/// change between releases 6.x, because tools read it.
///
/// An overload accepts its own type and classes derived from it. The overloads for QString and
/// QByteArray also accept string builders. Any other conversion to the type is a compile error: an
/// enumeration is not accepted as int, and a pointer is not accepted as bool. All functions are
/// thread-safe, except for a QCursor and for a value that contains one (a variant or a container).
/// None fails.
///
/// For a type of your own, define `QString logStr(const Type &)` in the namespace of the type. The
/// containers below then accept the type as well. For a type of the standard library that is not
/// listed here, write the text yourself: a program must not add functions to the namespace std.
namespace Vyn {

/// \name Text: a literal that StringUtils::asStringLiteral() quotes and escapes
/// Bytes are decoded from UTF-8. A pointer is to zero-terminated text; null gives "<null string>".
/// The separators of a path are unchanged.
/// \{
OVRABASE_EXPORT QString logStr(const QString &value);
OVRABASE_EXPORT QString logStr(QStringView value);
OVRABASE_EXPORT QString logStr(QLatin1String value);
OVRABASE_EXPORT QString logStr(std::string_view value);
OVRABASE_EXPORT QString logStr(const std::filesystem::path &value);
OVRABASE_EXPORT QString logStr(const std::string &value);
OVRABASE_EXPORT QString logStr(const std::u16string &value);
OVRABASE_EXPORT QString logStr(const std::u32string &value);
OVRABASE_EXPORT QString logStr(const std::wstring &value);
OVRABASE_EXPORT QString logStr(const char *value);
OVRABASE_EXPORT QString logStr(const unsigned char *value);
OVRABASE_EXPORT QString logStr(const char16_t *value);
OVRABASE_EXPORT QString logStr(const char32_t *value);
OVRABASE_EXPORT QString logStr(const wchar_t *value);
/// \}

/// \name Characters: in single quotes, with the escapes of StringUtils::asStringLiteral()
/// A byte is decoded from UTF-8, so that a byte outside of ASCII gives U+FFFD.
/// \{
OVRABASE_EXPORT QString logStr(char value);
OVRABASE_EXPORT QString logStr(unsigned char value);
OVRABASE_EXPORT QString logStr(QChar value);
OVRABASE_EXPORT QString logStr(char16_t value);
OVRABASE_EXPORT QString logStr(char32_t value);
OVRABASE_EXPORT QString logStr(wchar_t value);
/// \}

/// \name Booleans and floating-point numbers
/// "true" or "false". A float has up to 8 significant digits, and a double up to 6.
/// \{
OVRABASE_EXPORT QString logStr(bool value);
OVRABASE_EXPORT QString logStr(float value);
OVRABASE_EXPORT QString logStr(double value);
/// \}

/// \name Bytes and bits
/// Bytes are percent-encoded. Bits are in brackets, the bit with the index 0 first: "[0110]".
/// \{
OVRABASE_EXPORT QString logStr(const QByteArray &value);
OVRABASE_EXPORT QString logStr(const QBitArray &value);
/// \}

/// \name Dates, locales, identifiers and regular expressions
/// A date is "2024-02-29", a time "23:59:58.007", and a date with time has both with a space
/// between them. A locale is its name. A URL and a UUID are their toString(). A regular expression
/// is in slashes, with a letter for each option: "/pattern/ism".
/// \{
OVRABASE_EXPORT QString logStr(const QDate &value);
OVRABASE_EXPORT QString logStr(const QTime &value);
OVRABASE_EXPORT QString logStr(const QDateTime &value);
OVRABASE_EXPORT QString logStr(const QLocale &value);
OVRABASE_EXPORT QString logStr(const QUrl &value);
OVRABASE_EXPORT QString logStr(const QUuid &value);
OVRABASE_EXPORT QString logStr(const QRegularExpression &value);
/// \}

/// \name Model indexes
/// An invalid index is "()". A top-level index is "(row, column)". Any other index is
/// "(row, column, depth=n)", where n is the number of its ancestors.
/// \{
OVRABASE_EXPORT QString logStr(const QModelIndex &value);
OVRABASE_EXPORT QString logStr(const QPersistentModelIndex &value);
/// \}

/// \name Geometry
/// A point is "(1,2)", a size "3x4", a rectangle "(1x2)wh(3x4)" and a line "(1,2)--(3,4)". A
/// polygon is its points, joined by "--", and an easing curve the points of its spline. A region is
/// its rectangles, joined by " U ".
/// \{
OVRABASE_EXPORT QString logStr(const QPoint &value);
OVRABASE_EXPORT QString logStr(const QPointF &value);
OVRABASE_EXPORT QString logStr(const QSize &value);
OVRABASE_EXPORT QString logStr(const QSizeF &value);
OVRABASE_EXPORT QString logStr(const QRect &value);
OVRABASE_EXPORT QString logStr(const QRectF &value);
OVRABASE_EXPORT QString logStr(const QLine &value);
OVRABASE_EXPORT QString logStr(const QLineF &value);
OVRABASE_EXPORT QString logStr(const QPolygon &value);
OVRABASE_EXPORT QString logStr(const QPolygonF &value);
OVRABASE_EXPORT QString logStr(const QRegion &value);
OVRABASE_EXPORT QString logStr(const QEasingCurve &value);
/// \}

/// \name Vectors and matrices
/// A vector is "(1,2,3)", and a quaternion "1 + 2i + 3j + 4k". A matrix is the list of its rows,
/// "[[…],[…],[…],[…]]". A QTransform is its transpose, with "^t" at the end.
/// \{
OVRABASE_EXPORT QString logStr(const QVector2D &value);
OVRABASE_EXPORT QString logStr(const QVector3D &value);
OVRABASE_EXPORT QString logStr(const QVector4D &value);
OVRABASE_EXPORT QString logStr(const QQuaternion &value);
OVRABASE_EXPORT QString logStr(const QMatrix4x4 &value);
OVRABASE_EXPORT QString logStr(const QTransform &value);
/// \}

/// \name Colours, fonts, icons and key sequences
/// A colour is "#rrggbb", or "invalid". A brush is "brush with color #rrggbb", or "colorless
/// brush". A palette is a list of the colours of eight of its roles, and of "window", which has the
/// colour of Base and not of Window. An icon is its theme name. Without a name, it is a list of its
/// sizes. A null icon is "<null icon>". A font and a key sequence are their toString().
/// \{
OVRABASE_EXPORT QString logStr(const QColor &value);
OVRABASE_EXPORT QString logStr(const QBrush &value);
OVRABASE_EXPORT QString logStr(const QPalette &value);
OVRABASE_EXPORT QString logStr(const QFont &value);
OVRABASE_EXPORT QString logStr(const QIcon &value);
OVRABASE_EXPORT QString logStr(const QKeySequence &value);
/// \}

/// \name Images: the size and the bits per pixel, "640x480:32bpp"
/// A null QImage is "<null image>", a null QBitmap "<null bitmap>", and a null QPixmap "null".
/// \{
OVRABASE_EXPORT QString logStr(const QImage &value);
OVRABASE_EXPORT QString logStr(const QBitmap &value);
OVRABASE_EXPORT QString logStr(const QPixmap &value);
/// Returns the text of the cursor's bitmap, as of a QPixmap, and the position of the mouse pointer.
/// Call it on the GUI thread only.
OVRABASE_EXPORT QString logStr(const QCursor &value);
/// \}

/// Returns "QVariant(text as type)". The text is the logStr() of the value in the variant.
///
/// Formats bool, char, int, uint, qlonglong, qulonglong, double, QStringList, the Qt classes above
/// except QChar, QStringView and QLatin1String, and lists, maps and hashes of variants. For any
/// other type, the text is "<?>"; a null variant of such a type gives "QVariant(Null)". Lists, maps
/// and hashes are formatted up to 1000 levels deep; a deeper one is "…".
OVRABASE_EXPORT QString logStr(const QVariant &value);

/// \name Variants by name: "{key: value, key: value}", with the keys without quotes
/// A QHash has its own order, and a QMap the order of its keys. Within a variant, a QMap is
/// "[("key", value), ("key", value)]" instead.
/// \{
OVRABASE_EXPORT QString logStr(const QHash<QString, QVariant> &value);
OVRABASE_EXPORT QString logStr(const QMap<QString, QVariant> &value);
/// \}

/// Parts of the functions below. Not for callers.
namespace Detail {

template<class T, class... Ts>
inline constexpr bool isOneOf = (std::is_same_v<T, Ts> || ...);

/// An integer type that is not bool and not a character type.
template<class T>
concept Number = std::integral<T> && !isOneOf<T, bool, char, signed char, unsigned char, wchar_t,
    decltype(u8' '), char16_t, char32_t>;

/// A scalar type that is neither a Number nor a pointer to an object: an enumeration, bool, a
/// character type, a floating-point type, a pointer to a function or to a member. For bool, char
/// and others, there is an overload above, which is preferred to the deleted template below.
template<class T>
concept OtherScalar =
    std::is_scalar_v<T> && !Number<T> && !std::convertible_to<T, const volatile void *>;

/// True for QStringBuilder: the type of an expression of Qt strings with the operator %, or with +
/// if QT_USE_QSTRINGBUILDER is defined.
template<class T>
inline constexpr bool isStringBuilder = false;
template<class A, class B>
inline constexpr bool isStringBuilder<QStringBuilder<A, B>> = true;

/// Makes a call ambiguous whose argument needs a conversion to the type of an overload, because the
/// argument converts to this type as well. A string builder does not, so that it can become
/// QString.
struct Convertible {
    template<class T>
    requires(!isStringBuilder<T>) Convertible(const T &);
};

} // namespace Detail

/// Returns \a value in decimal.
template<Detail::Number T>
QString logStr(T value)
{
    if constexpr (std::is_signed_v<T>) {
        return QString::number(qlonglong{value});
    } else {
        return QString::number(qulonglong{value});
    }
}

// A value without an overload of its own must not convert to bool, char or double.
template<Detail::OtherScalar T>
QString logStr(T value) = delete;
QString logStr(const volatile void *value) = delete;
QString logStr(Detail::Convertible value) = delete;

namespace Detail {

/// Calls logStr() for a T. Defined after all overloads, so that it finds each of them.
template<class T>
struct Form;

/// There is a logStr() for T.
template<class T>
concept HasForm = Form<T>::exists;

/// Returns the texts that \a textOf returns for \a values, joined by ", ", between \a open and
/// \a close.
template<class Range, class Function>
QString joined(QChar open, const Range &values, const Function &textOf, QChar close)
{
    QString text(open);
    bool isFirst = true;
    for (const auto &value : values) {
        if (!std::exchange(isFirst, false)) {
            text += QStringLiteral(", ");
        }
        text += textOf(value);
    }
    return text += close;
}

template<class T, class Range>
QString listOf(const Range &values)
{
    return joined(u'[', values, &Form<T>::of, u']');
}

template<class Key, class T, class Map>
QString mapOf(const Map &values)
{
    const auto entry = [](const auto &pair) -> QString {
        return Form<Key>::of(pair.first) + QStringLiteral(": ") + Form<T>::of(pair.second);
    };
    return joined(u'{', values, entry, u'}');
}

} // namespace Detail

/// \name Lists: "[a, b]", with the logStr() of each value, in the order of the container
/// \{
template<Detail::HasForm T>
QString logStr(const QList<T> &values)
{
    return Detail::listOf<T>(values);
}
template<Detail::HasForm T>
QString logStr(const QSet<T> &values)
{
    return Detail::listOf<T>(values);
}
template<Detail::HasForm T, class Allocator>
QString logStr(const std::vector<T, Allocator> &values)
{
    return Detail::listOf<T>(values);
}
template<Detail::HasForm T, std::size_t N>
QString logStr(const std::array<T, N> &values)
{
    return Detail::listOf<T>(values);
}
/// \}

/// \name Maps: "{key: value, key: value}", with the logStr() of each key and value, in key order
/// \{
template<Detail::HasForm Key, Detail::HasForm T>
QString logStr(const QMap<Key, T> &values)
{
    return Detail::mapOf<Key, T>(values.asKeyValueRange());
}
template<Detail::HasForm Key, Detail::HasForm T, class Compare, class Allocator>
QString logStr(const std::map<Key, T, Compare, Allocator> &values)
{
    return Detail::mapOf<Key, T>(values);
}
/// \}

/// Returns "(a, b)", with the logStr() of both values.
template<Detail::HasForm A, Detail::HasForm B>
QString logStr(const std::pair<A, B> &value)
{
    return u'(' + Detail::Form<A>::of(value.first) + QStringLiteral(", ") +
           Detail::Form<B>::of(value.second) + u')';
}

/// Returns "[a]" with the logStr() of the value, or "[]" if there is none.
template<Detail::HasForm T>
QString logStr(const std::optional<T> &value)
{
    return value ? QStringLiteral("[%1]").arg(Detail::Form<T>::of(*value)) : QStringLiteral("[]");
}

// Finds the functions above, and by argument-dependent lookup those in the namespace of T.
template<class T>
struct Detail::Form {
    static constexpr bool exists = requires(const T &value) { logStr(value); };

    static QString of(const T &value) { return logStr(value); }
};

} // namespace Vyn
