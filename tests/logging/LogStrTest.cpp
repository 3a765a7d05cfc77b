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
#include <QLocale>
#include <QMatrix4x4>
#include <QPalette>
#include <QPolygon>
#include <QQuaternion>
#include <QRegion>
#include <QRegularExpression>
#include <QStandardItemModel>
#include <QTransform>
#include <QUrl>
#include <QUuid>
#include <QVariant>
#include <QVector2D>
#include <QVector3D>
#include <QVector4D>

#include <gmock/gmock.h>

#include <filesystem>

namespace {

/// A caller's own type, which the library cannot know.
struct Mine {
    int value;
};

QString logStr(const Mine &mine)
{
    return QStringLiteral("mine %1").arg(mine.value);
}

enum Unscoped { Member };
enum class Scoped { Member };

template<class T>
concept HasForm = requires(T value)
{
    Vyn::logStr(value);
};

} // namespace

namespace Vyn {
namespace {

using namespace Qt::StringLiterals;

/// A macro fails at the line of its row. Of std::string, since that prints readably.
#define EXPECT_SHOWN(value, text) EXPECT_EQ(logStr(value).toStdString(), text)

TEST(LogStr, ShowsTextAsALiteral)
{
    EXPECT_SHOWN(u"tab\t\"é\" %1"_s, R"("tab\t\"é\" %1")");
    EXPECT_SHOWN("", R"("")");
    EXPECT_SHOWN("é", R"("é")");
    EXPECT_SHOWN(reinterpret_cast<const unsigned char *>("é"), R"("é")");
    EXPECT_SHOWN(u"😀", R"("😀")");
    EXPECT_SHOWN(U"😀", R"("😀")");
    EXPECT_SHOWN(L"😀", R"("😀")");
    EXPECT_SHOWN(std::string("é"), R"("é")");
    EXPECT_SHOWN(std::u16string(u"😀"), R"("😀")");
    EXPECT_SHOWN(std::u32string(U"😀"), R"("😀")");
    EXPECT_SHOWN(std::wstring(L"😀"), R"("😀")");
    char buffer[] = "in a buffer";
    EXPECT_SHOWN(buffer, R"("in a buffer")");

    EXPECT_SHOWN(static_cast<const char *>(nullptr), "<null string>");
    EXPECT_SHOWN(static_cast<const unsigned char *>(nullptr), "<null string>");
    EXPECT_SHOWN(static_cast<const char16_t *>(nullptr), "<null string>");
    EXPECT_SHOWN(static_cast<const char32_t *>(nullptr), "<null string>");
    EXPECT_SHOWN(static_cast<const wchar_t *>(nullptr), "<null string>");
}

TEST(LogStr, ShowsACharacterInSingleQuotes)
{
    EXPECT_SHOWN('a', "'a'");
    EXPECT_SHOWN('\n', R"('\n')");
    EXPECT_SHOWN('\'', "'''");
    EXPECT_SHOWN('"', R"('\"')");
    EXPECT_SHOWN('\xE9', "'\uFFFD'"); // half of a UTF-8 character
    EXPECT_SHOWN(static_cast<unsigned char>('a'), "'a'");
    EXPECT_SHOWN(QChar(u'é'), "'é'");
    EXPECT_SHOWN(u'é', "'é'");
    EXPECT_SHOWN(U'😀', "'😀'");
    EXPECT_SHOWN(L'é', "'é'");
    EXPECT_EQ(logStr('\0'), u"'\0'"_s);
}

TEST(LogStr, ShowsNumbers)
{
    EXPECT_SHOWN(true, "true");
    EXPECT_SHOWN(false, "false");
    EXPECT_SHOWN(1.0F / 3, "0.33333334");
    EXPECT_SHOWN(1.0 / 3, "0.333333");
    EXPECT_SHOWN(1e20, "1e+20");
    EXPECT_SHOWN(5, "5");
    EXPECT_SHOWN(short{-5}, "-5");
    EXPECT_SHOWN(std::numeric_limits<qint64>::min(), "-9223372036854775808");
    EXPECT_SHOWN(std::numeric_limits<quint64>::max(), "18446744073709551615");
}

TEST(LogStr, RefusesWhatMerelyConverts)
{
    static_assert(HasForm<int> && HasForm<char *> && HasForm<QStringList>);
    static_assert(!HasForm<int *> && !HasForm<void *> && !HasForm<const volatile void *>);
    static_assert(!HasForm<std::nullptr_t> && !HasForm<signed char *> && !HasForm<void (*)()>);
    static_assert(!HasForm<int Mine::*> && !HasForm<Unscoped> && !HasForm<Scoped>);
    static_assert(!HasForm<Qt::GlobalColor> && !HasForm<Qt::CursorShape>);
    static_assert(!HasForm<signed char> && !HasForm<char8_t> && !HasForm<long double>);
    static_assert(!HasForm<QStringView> && !HasForm<QLatin1String> && !HasForm<QLatin1Char>);
    static_assert(!HasForm<std::true_type> && !HasForm<std::filesystem::path>);
    static_assert(!HasForm<QVariantMap> && !HasForm<QGradient> && !HasForm<Mine>);
}

TEST(LogStr, ShowsBytesNamesAndDates)
{
    EXPECT_SHOWN(QByteArray("a b/\xFF%"), "a%20b%2F%FF%25");
    QBitArray bits(4);
    bits.setBit(1);
    bits.setBit(2);
    EXPECT_SHOWN(bits, "[0110]");
    EXPECT_SHOWN(QBitArray(), "[]");
    const QDate date(2024, 2, 29);
    const QTime time(23, 59, 58, 7);
    EXPECT_SHOWN(date, "2024-02-29");
    EXPECT_SHOWN(time, "23:59:58.007");
    EXPECT_SHOWN(QDateTime(date, time), "2024-02-29 23:59:58.007");
    EXPECT_SHOWN(QDate(), "");
    EXPECT_SHOWN(QLocale(u"de_CH"_s), "de_CH");
    EXPECT_SHOWN(QUrl(u"file:///a b/%25"_s), "file:///a b/%25");
    EXPECT_SHOWN(QUuid(), "{00000000-0000-0000-0000-000000000000}");
    EXPECT_SHOWN(QKeySequence(Qt::CTRL | Qt::Key_S), "Ctrl+S");
}

TEST(LogStr, ShowsTheOptionsOfAnExpression)
{
    using Expression = QRegularExpression;
    EXPECT_SHOWN(Expression(u"%2"_s), "/%2/");
    EXPECT_SHOWN(
        Expression(u"a+"_s, Expression::MultilineOption | Expression::CaseInsensitiveOption),
        "/a+/im");
    EXPECT_SHOWN(Expression(u"a"_s, Expression::PatternOptions(0x7F)), "/a/ismxUnu");
}

TEST(LogStr, ShowsWhereAnIndexStands)
{
    QStandardItemModel model(3, 4);
    QModelIndex index = model.index(2, 3);
    EXPECT_SHOWN(QModelIndex(), "()");
    EXPECT_SHOWN(QPersistentModelIndex(), "()");
    EXPECT_SHOWN(index, "(2, 3)");
    EXPECT_SHOWN(QPersistentModelIndex(index), "(2, 3)");
    for (int i = 0; i < 2; ++i) {
        model.itemFromIndex(index)->appendRow(new QStandardItem);
        index = model.index(0, 0, index);
    }
    EXPECT_SHOWN(index, "(0, 0, depth=2)");
}

TEST(LogStr, ShowsGeometry)
{
    EXPECT_SHOWN(QPoint(1, -2), "(1,-2)");
    EXPECT_SHOWN(QPointF(0.5, 1e7), "(0.5,1e+07)");
    EXPECT_SHOWN(QSize(3, 4), "3x4");
    EXPECT_SHOWN(QSizeF(1.0 / 3, 4), "0.333333x4");
    EXPECT_SHOWN(QRect(1, 2, 3, 4), "(1x2)wh(3x4)");
    EXPECT_SHOWN(QRectF(0.5, 2, 3, 4.25), "(0.5x2)wh(3x4.25)");
    EXPECT_SHOWN(QLine(0, 0, 5, 6), "(0,0)--(5,6)");
    EXPECT_SHOWN(QLineF(0.5, 0, 5, 6), "(0.5,0)--(5,6)");
    EXPECT_SHOWN(QPolygon(), "");
    EXPECT_SHOWN(QPolygon({{1, 2}, {3, 4}, {5, 6}}), "(1,2)--(3,4)--(5,6)");
    EXPECT_SHOWN(QPolygonF(QList<QPointF>{{0.5, 2}, {3, 4}}), "(0.5,2)--(3,4)");
    EXPECT_SHOWN(QRegion(0, 0, 1, 2).united(QRect(5, 0, 1, 2)), "(0x0)wh(1x2) U (5x0)wh(1x2)");
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.25, 0}, {0.5, 0.75}, {1, 1});
    EXPECT_SHOWN(curve, "(0.25,0)--(0.5,0.75)--(1,1)");
}

TEST(LogStr, ShowsVectorsAndMatrices)
{
    EXPECT_SHOWN(QVector2D(1.0F / 3, 2), "(0.333333,2)");
    EXPECT_SHOWN(QVector3D(1, 2, 3.5), "(1,2,3.5)");
    EXPECT_SHOWN(QVector4D(1, 2, 3, 4.5), "(1,2,3,4.5)");
    EXPECT_SHOWN(QQuaternion(1, 2, 3, -4), "1 + 2i + 3j + -4k");
    EXPECT_SHOWN(QMatrix4x4(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16),
        "[[1,2,3,4],[5,6,7,8],[9,10,11,12],[13,14,15,16]]");
    EXPECT_SHOWN(QTransform(1, 2, 3, 4, 5, 6, 7, 8, 9), "[[1,4,7],[2,5,8],[3,6,9]]^t");
}

TEST(LogStr, ShowsColours)
{
    EXPECT_SHOWN(QColor(255, 128, 0, 7), "#ff8000");
    EXPECT_SHOWN(QColor(), "invalid");
    EXPECT_SHOWN(QBrush(QColor(1, 2, 3)), "brush with color #010203");
    EXPECT_SHOWN(QBrush(QColor()), "colorless brush");

    QPalette palette;
    int shade = 1;
    for (const auto role :
        {QPalette::WindowText, QPalette::Button, QPalette::Light, QPalette::Dark, QPalette::Mid,
            QPalette::Text, QPalette::BrightText, QPalette::Base, QPalette::Window}) {
        palette.setColor(role, QColor(0, 0, shade++));
    }
    palette.setColor(QPalette::Mid, QColor());
    EXPECT_SHOWN(palette,
        "{windowText: #000001, button: #000002, light: #000003, dark: #000004, mid: invalid, "
        "text: #000006, bright_text: #000007, base: #000008, window: #000008}");
}

TEST(LogStr, ShowsImagesFontsIconsAndCursors)
{
    const QImage image(640, 480, QImage::Format_RGB32);
    QPixmap pixmap(6, 4);
    pixmap.fill();
    const QString pixmapText = u"6x4:%1bpp"_s.arg(pixmap.depth());
    EXPECT_SHOWN(image, "640x480:32bpp");
    EXPECT_SHOWN(QImage(), "<null image>");
    EXPECT_SHOWN(QBitmap(3, 2), "3x2:1bpp");
    EXPECT_SHOWN(QBitmap(), "<null bitmap>");
    EXPECT_EQ(logStr(pixmap), pixmapText);
    EXPECT_SHOWN(QPixmap(), "null");
    EXPECT_SHOWN(QFont(u"%1"_s), QFont(u"%1"_s).toString().toStdString());

    const QString place = u" cursor at (%1, %2)"_s.arg(QCursor::pos().x()).arg(QCursor::pos().y());
    QBitmap shape(16, 8);
    shape.clear();
    EXPECT_EQ(logStr(QCursor(shape, shape)), u"16x8:1bpp"_s + place);
    EXPECT_EQ(logStr(QCursor(Qt::ArrowCursor)), u"null"_s + place);

    QIcon icon(pixmap);
    icon.addPixmap(pixmap.scaled(12, 8));
    EXPECT_SHOWN(QIcon(), "<null icon>");
    EXPECT_SHOWN(icon, "icon with sizes 6x4:12x8");
}

TEST(LogStr, ShowsWhatAVariantHolds)
{
    EXPECT_SHOWN(QVariant(), "QVariant(Null)");
    EXPECT_SHOWN(QVariant::fromValue(nullptr), "QVariant(Null)");
    EXPECT_SHOWN(QVariant(5), "QVariant(5 as int)");
    EXPECT_SHOWN(QVariant(QMetaType::fromType<int>()), "QVariant(0 as int)");
    EXPECT_SHOWN(QVariant(quint64{1} << 63), "QVariant(9223372036854775808 as qulonglong)");
    EXPECT_SHOWN(QVariant(u"%2"_s), R"(QVariant("%2" as QString))");
    EXPECT_SHOWN(QVariant(1.5F), "QVariant(<?> as float)");
    EXPECT_SHOWN(QVariant::fromValue(QMarginsF()), "QVariant(<?> as QMarginsF)");
    EXPECT_SHOWN(QVariant(QStringList{u"a"_s, u"b"_s}), R"(QVariant(["a", "b"] as QStringList))");
    EXPECT_SHOWN(QVariant(QVariantList{1, QVariantList{true}}),
        "QVariant([QVariant(1 as int), QVariant([QVariant(true as bool)] as QVariantList)] as "
        "QVariantList)");
    EXPECT_SHOWN(QVariant(QVariantMap{{u"b"_s, 2}, {u"%2"_s, 1}}),
        R"(QVariant([("%2", QVariant(1 as int)), ("b", QVariant(2 as int))] as QVariantMap))");
    EXPECT_SHOWN(
        QVariant(QVariantHash{{u"%1"_s, 1}}), "QVariant({%1: QVariant(1 as int)} as QVariantHash)");
    EXPECT_SHOWN(QVariantHash(), "{}");
}

TEST(LogStr, KnowsTheseTypesInVariants)
{
    QStringList known;
    for (int type = QMetaType::UnknownType + 1; type <= QMetaType::LastGuiType; ++type) {
        if (QMetaType::isRegistered(type) &&
            logStr(QVariant(QMetaType(type))) != u"QVariant(Null)"_s) {
            known += QString::fromUtf8(QMetaType(type).name());
        }
    }
    known.sort();
    EXPECT_EQ(known.join(u' ').toStdString(),
        "QBitArray QBitmap QBrush QByteArray QColor QCursor QDate QDateTime QEasingCurve "
        "QFont QIcon QImage QKeySequence QLine QLineF QLocale QMatrix4x4 QModelIndex "
        "QPalette QPersistentModelIndex QPixmap QPoint QPointF QPolygon QPolygonF "
        "QQuaternion QRect QRectF QRegion QRegularExpression QSize QSizeF QString "
        "QStringList QTime QTransform QUrl QUuid QVariantHash QVariantList QVariantMap "
        "QVector2D QVector3D QVector4D bool char double int qlonglong qulonglong uint");
}

TEST(LogStr, ShowsListsAndOptionals)
{
    EXPECT_SHOWN((std::vector<int>{1, 2}), "[1, 2]");
    EXPECT_SHOWN(std::vector<int>(), "[]");
    EXPECT_SHOWN((std::vector<bool>{true, false}), "[true, false]");
    EXPECT_SHOWN((QStringList{u"a, b"_s, u"%1"_s}), R"(["a, b", "%1"])");
    EXPECT_SHOWN((std::vector<std::vector<QPoint>>{{{1, 2}}, {}}), "[[(1,2)], []]");
    EXPECT_SHOWN((QList<std::optional<double>>{1.5, std::nullopt}), "[[1.5], []]");
    EXPECT_SHOWN((QVariantList{1}), "[QVariant(1 as int)]");
    EXPECT_SHOWN((std::vector<QList<Mine>>{{{1}, {2}}}), "[[mine 1, mine 2]]");
    EXPECT_SHOWN(std::optional(Mine{3}), "[mine 3]");
}

} // namespace
} // namespace Vyn
