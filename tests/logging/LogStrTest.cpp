// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/logStr.h>

#include <QtGui>

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace Vyn {
namespace {

using namespace Qt::StringLiterals;
using namespace std::string_literals;
using Detail::HasForm;
using testing::Each;

/// A caller's own type, which the library cannot know.
struct Mine {
    int value;
    friend QString logStr(const Mine &mine) { return u"mine %1"_s.arg(mine.value); }
};

enum Unscoped { Member };
enum class Scoped { Member };

template<class T>
const T *const kNull = nullptr;

template<class... T>
constexpr bool hasAnyForm = (HasForm<T> || ...);

// These types have no logStr(), although some convert to a type that has one.
static_assert(
    !hasAnyForm<int *, std::nullptr_t, void (*)(), int Mine::*, Unscoped, Scoped, signed char,
        char8_t, long double, std::true_type, QLatin1Char, QGradient, Qt::GlobalColor,
        std::vector<int *>, QSet<Scoped>, std::pair<int, Scoped>, std::array<Unscoped, 1>,
        std::map<Scoped, int>, QMap<int, QList<void *>>, std::optional<Scoped>>);

/// Returns the texts of \a values, each with a bar after it.
template<class... T>
std::string shown(const T &...values)
{
    QString text;
    ((text += logStr(values) + u" | "_s), ...);
    return text.toStdString();
}

TEST(LogStr, ShowsTextAsALiteral)
{
    const auto *const bytes = reinterpret_cast<const unsigned char *>("😀");
    char buffer[] = "😀";
    const QString texts[] = {logStr(buffer), logStr(bytes), logStr(u"😀"), logStr(U"😀"),
        logStr(L"😀"), logStr("😀"s), logStr(u"😀"s), logStr(U"😀"s), logStr(L"😀"s),
        logStr(QStringView(u"😀")), logStr(std::filesystem::path(u"😀"))};
    EXPECT_THAT(texts, Each(u"\"😀\""_s));
    const QString nulls[] = {logStr(kNull<char>), logStr(kNull<unsigned char>),
        logStr(kNull<char16_t>), logStr(kNull<char32_t>), logStr(kNull<wchar_t>)};
    EXPECT_THAT(nulls, Each(u"<null string>"_s));
    EXPECT_EQ(shown(u"\t\"é\" %1"_s, "", std::string_view("é\0é", 3), QLatin1String("\xE9"),
                  u"a"_s % QChar(u'b')),
        "\"\\t\\\"é\\\" %1\" | \"\" | \"é\0\" | \"é\" | \"ab\" | "s);
}

TEST(LogStr, ShowsCharactersAndNumbers)
{
    // The byte E9 is a part of a UTF-8 character.
    EXPECT_EQ(shown('a', '\n', '\'', '"', '\xE9', static_cast<unsigned char>('a'), QChar(u'é'),
                  u'é', U'😀', L'é', '\0'),
        "'a' | '\\n' | ''' | '\\\"' | '\uFFFD' | 'a' | 'é' | 'é' | '😀' | 'é' | '\0' | "s);
    EXPECT_EQ(shown(char32_t{QChar::ByteOrderMark}, wchar_t{QChar::ByteOrderMark}, true, false,
                  1.0F / 3, 1.0 / 3, short{-5}, INT64_MIN, UINT64_MAX),
        "'\uFEFF' | '\uFEFF' | true | false | 0.33333334 | 0.333333 | -5 | -9223372036854775808 | "
        "18446744073709551615 | ");
}

TEST(LogStr, ShowsBytesDatesUrlsShortcutsPatternsAndModelIndexes)
{
    const QDateTime time({2024, 2, 29}, {23, 59, 58, 7});
    EXPECT_EQ(shown(QByteArray("a b/\xFF%"), QBitArray::fromBits("\3", 4), time.date(), time.time(),
                  time, QLocale(u"de_CH"_s), QUrl(u"file:///a b/%25"_s), QUuid(),
                  QKeySequence(Qt::CTRL | Qt::Key_S), QRegularExpression(u"%2"_s),
                  QRegularExpression(u"a+"_s, QRegularExpression::MultilineOption),
                  QRegularExpression(u"a"_s, QRegularExpression::PatternOptions(0x7F))),
        "a%20b%2F%FF%25 | [1100] | 2024-02-29 | 23:59:58.007 | 2024-02-29 23:59:58.007 | de_CH | "
        "file:///a b/%25 | {00000000-0000-0000-0000-000000000000} | Ctrl+S | /%2/ | /a+/m | "
        "/a/ismxUnu | ");
    QStandardItemModel model(3, 4);
    const QModelIndex top = model.index(2, 3);
    model.itemFromIndex(top)->appendRow(new QStandardItem(1, 1));
    const QPersistentModelIndex deepest = model.index(0, 0, model.index(0, 0, top));
    EXPECT_EQ(shown(QModelIndex(), top, deepest), "() | (2, 3) | (0, 0, depth=2) | ");
}

TEST(LogStr, ShowsGeometryVectorsAndMatrices)
{
    EXPECT_EQ(
        shown(QPoint(1, -2), QPointF(0.5, 1e7), QSize(3, 4), QSizeF(1.0 / 3, 4), QRect(1, 2, 3, 4),
            QRectF(0.5, 2, 3, 4.25), QLine(0, 0, 5, 6), QLineF(0.5, 0, 5, 6), QPolygon(),
            QPolygon({{1, 2}, {3, 4}, {5, 6}}), QPolygonF(QList<QPointF>{{0.5, 2}, {3, 4}}),
            QRegion(0, 0, 1, 2).united(QRect(5, 0, 1, 2))),
        "(1,-2) | (0.5,1e+07) | 3x4 | 0.333333x4 | (1x2)wh(3x4) | (0.5x2)wh(3x4.25) | (0,0)--(5,6) "
        "| (0.5,0)--(5,6) |  | (1,2)--(3,4)--(5,6) | (0.5,2)--(3,4) | (0x0)wh(1x2) U (5x0)wh(1x2) "
        "| ");
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.25, 0}, {0.5, 0.75}, {1, 1});
    EXPECT_EQ(shown(curve, QVector2D(1.0F / 3, 2), QVector3D(1, 2, 3.5), QVector4D(1, 2, 3, 4.5),
                  QQuaternion(1, 2, 3, -4),
                  QMatrix4x4(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16),
                  QTransform(1, 2, 3, 4, 5, 6, 7, 8, 9)),
        "(0.25,0)--(0.5,0.75)--(1,1) | (0.333333,2) | (1,2,3.5) | (1,2,3,4.5) | 1 + 2i + 3j + -4k "
        "| [[1,2,3,4],[5,6,7,8],[9,10,11,12],[13,14,15,16]] | [[1,4,7],[2,5,8],[3,6,9]]^t | ");
}

TEST(LogStr, ShowsColoursImagesFontsIconsAndCursors)
{
    EXPECT_EQ(shown(QColor(255, 128, 0, 7), QColor(), QBrush(QColor(1, 2, 3)), QBrush(QColor()),
                  QPalette(Qt::red, Qt::green, Qt::blue, Qt::cyan, Qt::magenta, Qt::yellow,
                      Qt::black, Qt::white, Qt::gray)),
        "#ff8000 | invalid | brush with color #010203 | colorless brush | {windowText: #ff0000, "
        "button: #00ff00, light: #0000ff, dark: #00ffff, mid: #ff00ff, text: #ffff00, bright_text: "
        "#000000, base: #ffffff, window: #ffffff} | ");

    const QString place = u" cursor at (%1, %2)"_s.arg(QCursor::pos().x()).arg(QCursor::pos().y());
    QBitmap shape(16, 8);
    shape.clear();
    EXPECT_EQ(logStr(QCursor(shape, shape)), u"16x8:1bpp"_s + place);
    EXPECT_EQ(logStr(QCursor(Qt::ArrowCursor)), u"null"_s + place);

    QPixmap pixmap(6, 4);
    pixmap.fill();
    QIcon icon(pixmap);
    icon.addPixmap(pixmap.scaled(12, 8));
    struct Themed : QIconEngine {
        void paint(QPainter *, const QRect &, QIcon::Mode, QIcon::State) override {}
        QIconEngine *clone() const override { return new Themed; }
        QString iconName() override { return u"%1"_s; }
    };
    const QFont font(u"%1"_s);
    EXPECT_EQ(shown(QImage(640, 480, QImage::Format_RGB32), QImage(), QBitmap(3, 2), QBitmap(),
                  pixmap, QPixmap(), QIcon(), icon, QIcon(new Themed), font),
        "640x480:32bpp | <null image> | 3x2:1bpp | <null bitmap> | 6x4:32bpp | null | "
        "<null icon> | icon with sizes 6x4:12x8 | %1 | " +
            font.toString().toStdString() + " | ");
}

TEST(LogStr, ShowsWhatAVariantOfOneOf51TypesHolds)
{
    EXPECT_EQ(shown(QVariant(), QVariant(QMetaType::fromType<int>()), QVariant(u"%2"_s),
                  QVariant(1.5F), QVariant(QVariantList{1, QVariantList()}),
                  QVariant(QVariantMap{{u"b"_s, 2}, {u"%2"_s, 1}}),
                  QVariant(QVariantHash{{u"%1"_s, 1}}), QVariantHash()),
        R"(QVariant(Null) | QVariant(0 as int) | QVariant("%2" as QString) | QVariant(<?> as float) | )"
        R"(QVariant([QVariant(1 as int), QVariant([] as QVariantList)] as QVariantList) | )"
        R"(QVariant([("%2", QVariant(1 as int)), ("b", QVariant(2 as int))] as QVariantMap) | )"
        R"(QVariant({%1: QVariant(1 as int)} as QVariantHash) | {} | )");
    QStringList known;
    for (int type = QMetaType::UnknownType + 1; type <= QMetaType::LastGuiType; ++type) {
        known += logStr(QVariant(QMetaType(type)));
    }
    known.removeAll(u"QVariant(Null)"_s);
    EXPECT_EQ(known.size(), 51) << known.join(u' ').toStdString();
}

TEST(LogStr, ShowsAThousandNestedVariantsOnASmallStackAndCutsDeeperOnes)
{
    const auto nested = [](int depth) {
        QVariant value = 5;
        for (int i = 0; i < depth; i += 3) {
            value = QVariantHash{{u"k"_s, QVariantMap{{u"k"_s, QVariantList{value}}}}};
        }
        return value;
    };
    const std::unique_ptr<QThread> thread(QThread::create([&nested] {
        const QString cut = logStr(nested(1002));
        EXPECT_TRUE(logStr(nested(999)).contains(u"{k: QVariant([(\"k\", QVariant([QVariant(5"));
        EXPECT_EQ(shown(cut.count(u"QVariant("_s), cut.count(u'…')), "1000 | 1 | ");
    }));
    thread->setStackSize(1024 * 1024);
    thread->start();
    thread->wait();
}

TEST(LogStr, ShowsContainersOfTypesThatItCanShow)
{
    EXPECT_EQ(
        shown(std::vector<bool>{true, false}, std::vector<std::vector<QPoint>>{{{1, 2}}, {}},
            QList<std::optional<double>>{1.5, std::nullopt}, QSet<int>{1}, QVariantList{1},
            QList<QByteArray>{"", "a", ""}, std::optional(Mine{3}),
            std::pair(true, std::pair(1, u"%1"_s)),
            QMap<QString, QList<Mine>>{{u"b"_s, {}}, {u"a"_s, {{1}, {2}}}},
            std::map<int, std::array<char, 2>, std::greater<>>{{1, {'x', 'y'}}, {2, {'a', 'b'}}},
            QVariantMap{{u"b"_s, 1}, {u"a"_s, 2}}),
        R"([true, false] | [[(1,2)], []] | [[1.5], []] | [1] | [QVariant(1 as int)] | [, a, ] | )"
        R"([mine 3] | (true, (1, "%1")) | {"a": [mine 1, mine 2], "b": []} | )"
        R"({2: ['a', 'b'], 1: ['x', 'y']} | {a: QVariant(2 as int), b: QVariant(1 as int)} | )");
}

} // namespace
} // namespace Vyn
