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
/// logStr() shows a value in a log message, in a short text that never changes: tools read it.
///
/// An overload takes its type and nothing that merely converts to it: a pointer is no bool and an
/// enumeration no number, the call does not compile. All functions may be called from any thread
/// but for the one of QCursor (in a variant, too), and none fails.
///
/// A type of your own joins in with a function `QString logStr(const Type &)` in its own namespace.
/// The containers below then have a logStr() too, as long as all of what they hold has one. Types
/// of the standard library that are not listed here are written out by the caller: they have no
/// form, and their namespace takes no functions of yours.
namespace Vyn {

/// \name Text, as a literal: quoted and escaped by StringUtils::asStringLiteral()
/// Bytes are read as UTF-8. Pointers are to zero-terminated text; null gives "<null string>". A
/// path keeps the separators that it has.
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

/// \name One character, as a literal in single quotes
/// A byte is read as UTF-8.
/// \{
OVRABASE_EXPORT QString logStr(char value);
OVRABASE_EXPORT QString logStr(unsigned char value);
OVRABASE_EXPORT QString logStr(QChar value);
OVRABASE_EXPORT QString logStr(char16_t value);
OVRABASE_EXPORT QString logStr(char32_t value);
OVRABASE_EXPORT QString logStr(wchar_t value);
/// \}

/// \name Truth and numbers
/// A float shows up to 8 digits, a double up to 6.
/// \{
OVRABASE_EXPORT QString logStr(bool value);
OVRABASE_EXPORT QString logStr(float value);
OVRABASE_EXPORT QString logStr(double value);
/// \}

/// \name Bytes and bits: percent-encoded; "[0110]"
/// \{
OVRABASE_EXPORT QString logStr(const QByteArray &value);
OVRABASE_EXPORT QString logStr(const QBitArray &value);
/// \}

/// \name Names, dates and expressions
/// "2024-02-29", "23:59:58.007", both with a space between; "/pattern/ims" with a letter per
/// option; the others as their class writes them.
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
/// "()" for an invalid one, "(row, column)", below the top "(row, column, depth=ancestors)".
/// \{
OVRABASE_EXPORT QString logStr(const QModelIndex &value);
OVRABASE_EXPORT QString logStr(const QPersistentModelIndex &value);
/// \}

/// \name Geometry
/// Points "(x,y)", sizes "wxh", rectangles "(xxy)wh(wxh)", lines "(x,y)--(x,y)". A polygon and the
/// spline of an easing curve join their points by "--", a region its rectangles by " U ".
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
/// Vectors "(x,y)", a quaternion "1 + 2i + 3j + 4k", matrices row by row in brackets. A transform
/// shows its transpose, and says so by "^t" at the end.
/// \{
OVRABASE_EXPORT QString logStr(const QVector2D &value);
OVRABASE_EXPORT QString logStr(const QVector3D &value);
OVRABASE_EXPORT QString logStr(const QVector4D &value);
OVRABASE_EXPORT QString logStr(const QQuaternion &value);
OVRABASE_EXPORT QString logStr(const QMatrix4x4 &value);
OVRABASE_EXPORT QString logStr(const QTransform &value);
/// \}

/// \name Colours and looks
/// "#rrggbb", or "invalid". A palette shows the colour of its Base role in the place of Window too.
/// An icon gives its theme name, without one its sizes.
/// \{
OVRABASE_EXPORT QString logStr(const QColor &value);
OVRABASE_EXPORT QString logStr(const QBrush &value);
OVRABASE_EXPORT QString logStr(const QPalette &value);
OVRABASE_EXPORT QString logStr(const QFont &value);
OVRABASE_EXPORT QString logStr(const QIcon &value);
OVRABASE_EXPORT QString logStr(const QKeySequence &value);
/// \}

/// \name Images: "640x480:32bpp"
/// Null ones give "<null image>", "<null bitmap>" and, for a pixmap, "null".
/// \{
OVRABASE_EXPORT QString logStr(const QImage &value);
OVRABASE_EXPORT QString logStr(const QBitmap &value);
OVRABASE_EXPORT QString logStr(const QPixmap &value);
/// Shows the bitmap of the cursor and where the mouse pointer is now. For the GUI thread only.
OVRABASE_EXPORT QString logStr(const QCursor &value);
/// \}

/// Returns "QVariant(text as type)", with the logStr() of what \a value holds, "<?>" for a type
/// that is not known here; "QVariant(Null)" for a null variant of such a type. Lists, maps and
/// hashes of variants show up to 1000 of them nested; for one that is nested deeper stands "…".
OVRABASE_EXPORT QString logStr(const QVariant &value);

/// \name Named variants: "{key: value, key: value}" with the keys without quotes
/// In the order of the hash, or of the keys. In a variant a map has another form:
/// "[("key", value), ("key", value)]".
/// \{
OVRABASE_EXPORT QString logStr(const QHash<QString, QVariant> &value);
OVRABASE_EXPORT QString logStr(const QMap<QString, QVariant> &value);
/// \}

/// What the functions below are made of; not for callers.
namespace Detail {

template<class T, class... Ts>
inline constexpr bool isOneOf = (std::is_same_v<T, Ts> || ...);

/// The integers that count; those that hold a character show one, or are refused.
template<class T>
concept Number = std::integral<T> && !isOneOf<T, bool, char, signed char, unsigned char, wchar_t,
    decltype(u8' '), char16_t, char32_t>;

/// The enumerations, the odd number types and the pointers to what is no object.
template<class T>
concept Formless =
    std::is_scalar_v<T> && !Number<T> && !std::convertible_to<T, const volatile void *>;

template<class T>
inline constexpr bool isStringBuilder = false;
template<class A, class B>
inline constexpr bool isStringBuilder<QStringBuilder<A, B>> = true;

/// Whatever converts to the type of an overload converts to this as well, which is ambiguous; but
/// not a sum of strings, which is text.
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

/// What has no form of its own must not take that of a bool, a char or a double.
template<Detail::Formless T>
QString logStr(T value) = delete;
QString logStr(const volatile void *value) = delete;
QString logStr(Detail::Convertible value) = delete;

namespace Detail {

/// The logStr() of T, if there is one. Defined below all overloads, so that each finds the others.
template<class T>
struct Form;

template<class T>
concept HasForm = Form<T>::exists;

/// Joins what \a shown makes of each of \a values.
template<class Range, class Function>
QString joined(QChar open, const Range &values, const Function &shown, QChar close)
{
    QString text(open);
    bool isFirst = true;
    for (const auto &value : values) {
        if (!std::exchange(isFirst, false)) {
            text += QStringLiteral(", ");
        }
        text += shown(value);
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

/// \name Lists: "[a, b]" with the logStr() of each value, in the order of the container
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

/// \name Maps: "{key: value, key: value}" with the logStr() of each key and value, in key order
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

/// Returns "(a, b)" with the logStr() of both.
template<Detail::HasForm A, Detail::HasForm B>
QString logStr(const std::pair<A, B> &value)
{
    return u'(' + Detail::Form<A>::of(value.first) + QStringLiteral(", ") +
           Detail::Form<B>::of(value.second) + u')';
}

/// Returns the list of the one value, or of none: "[a]" or "[]".
template<Detail::HasForm T>
QString logStr(const std::optional<T> &value)
{
    return value ? QStringLiteral("[%1]").arg(Detail::Form<T>::of(*value)) : QStringLiteral("[]");
}

/// Finds the functions above, and others by their argument in the namespace of T.
template<class T>
struct Detail::Form {
    static constexpr bool exists = requires(const T &value) { logStr(value); };

    static QString of(const T &value) { return logStr(value); }
};

} // namespace Vyn
