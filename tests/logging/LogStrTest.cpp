// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/logStr.h>

#include <QtGui>

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <set>

namespace {

/// A caller's own type, which the library cannot know.
struct Mine {
    int value;
    friend QString logStr(const Mine &mine) { return QStringLiteral("mine %1").arg(mine.value); }
};

enum Unscoped { Member };
enum class Scoped { Member };

} // namespace

namespace Vyn {
namespace {

using namespace Qt::StringLiterals;
using namespace std::string_literals;
using Detail::HasForm;
using testing::Each;

template<class T>
const T *const kNull = nullptr;

struct Row {
    template<class T>
    Row(const T &value, std::string expected)
        : shown(logStr(value).toStdString())
        , text(std::move(expected))
    {
    }
    std::string shown;
    std::string text;
};

void expectShown(std::initializer_list<Row> rows)
{
    for (const Row &row : rows) {
        EXPECT_EQ(row.shown, row.text);
    }
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
    expectShown({{u"tab\t\"é\" %1"_s, R"("tab\t\"é\" %1")"}, {"", R"("")"},
        {std::string_view("é\0é", 3), "\"é\0\""s}, {QLatin1String("\xE9"), R"("é")"},
        {u"a"_s % QChar(u'b'), R"("ab")"}});
}

TEST(LogStr, ShowsCharactersAndNumbers)
{
    expectShown({{'a', "'a'"}, {'\n', R"('\n')"}, {'\'', "'''"}, {'"', R"('\"')"},
        {'\xE9', "'\uFFFD'"}, // half of a UTF-8 character
        {static_cast<unsigned char>('a'), "'a'"}, {QChar(u'é'), "'é'"}, {u'é', "'é'"},
        {U'😀', "'😀'"}, {L'é', "'é'"}, {'\0', "'\0'"s}, {char32_t{QChar::ByteOrderMark}, "'\uFEFF'"},
        {wchar_t{QChar::ByteOrderMark}, "'\uFEFF'"}, {true, "true"}, {false, "false"},
        {1.0F / 3, "0.33333334"}, {1.0 / 3, "0.333333"}, {1e20, "1e+20"}, {short{-5}, "-5"},
        {std::numeric_limits<qint64>::min(), "-9223372036854775808"},
        {std::numeric_limits<quint64>::max(), "18446744073709551615"}});
}

TEST(LogStr, RefusesTypesThatOnlyConvertToOneWithAForm)
{
    static_assert(HasForm<int> && HasForm<char *> && HasForm<QStringList>);
    static_assert(!HasForm<int *> && !HasForm<std::nullptr_t> && !HasForm<void (*)()>);
    static_assert(!HasForm<int Mine::*> && !HasForm<Unscoped> && !HasForm<Scoped>);
    static_assert(!HasForm<signed char> && !HasForm<char8_t> && !HasForm<long double>);
    static_assert(!HasForm<std::true_type> && !HasForm<QLatin1Char> && !HasForm<QGradient>);
    static_assert(!HasForm<Qt::GlobalColor> && !HasForm<std::set<int>>);
    static_assert(!HasForm<std::vector<int *>> && !HasForm<QSet<Scoped>> &&
                  !HasForm<std::pair<int, Scoped>> && !HasForm<std::array<Unscoped, 1>> &&
                  !HasForm<std::map<Scoped, int>> && !HasForm<QMap<int, QList<void *>>> &&
                  !HasForm<std::optional<Scoped>>);
}

TEST(LogStr, ShowsBytesNamesDatesAndExpressions)
{
    QBitArray bits(4);
    bits.fill(true, 1, 3);
    const QDate date(2024, 2, 29);
    const QTime time(23, 59, 58, 7);
    expectShown({{QByteArray("a b/\xFF%"), "a%20b%2F%FF%25"}, {bits, "[0110]"}, {QBitArray(), "[]"},
        {date, "2024-02-29"}, {time, "23:59:58.007"},
        {QDateTime(date, time), "2024-02-29 23:59:58.007"}, {QDate(), ""},
        {QLocale(u"de_CH"_s), "de_CH"}, {QUrl(u"file:///a b/%25"_s), "file:///a b/%25"},
        {QUuid(), "{00000000-0000-0000-0000-000000000000}"},
        {QKeySequence(Qt::CTRL | Qt::Key_S), "Ctrl+S"}});
    using Expression = QRegularExpression;
    expectShown({{Expression(u"%2"_s), "/%2/"},
        {Expression(u"a+"_s, Expression::MultilineOption | Expression::CaseInsensitiveOption),
            "/a+/im"},
        {Expression(u"a"_s, Expression::PatternOptions(0x7F)), "/a/ismxUnu"}});
}

TEST(LogStr, ShowsRowColumnAndDepthOfAnIndex)
{
    QStandardItemModel model(3, 4);
    QModelIndex index = model.index(2, 3);
    expectShown({{QModelIndex(), "()"}, {QPersistentModelIndex(), "()"}, {index, "(2, 3)"},
        {QPersistentModelIndex(index), "(2, 3)"}});
    for (int i = 0; i < 2; ++i) {
        model.itemFromIndex(index)->appendRow(new QStandardItem);
        index = model.index(0, 0, index);
    }
    expectShown({{index, "(0, 0, depth=2)"}});
}

TEST(LogStr, ShowsGeometryVectorsAndMatrices)
{
    expectShown({{QPoint(1, -2), "(1,-2)"}, {QPointF(0.5, 1e7), "(0.5,1e+07)"},
        {QSize(3, 4), "3x4"}, {QSizeF(1.0 / 3, 4), "0.333333x4"},
        {QRect(1, 2, 3, 4), "(1x2)wh(3x4)"}, {QRectF(0.5, 2, 3, 4.25), "(0.5x2)wh(3x4.25)"},
        {QLine(0, 0, 5, 6), "(0,0)--(5,6)"}, {QLineF(0.5, 0, 5, 6), "(0.5,0)--(5,6)"},
        {QPolygon(), ""}, {QPolygon({{1, 2}, {3, 4}, {5, 6}}), "(1,2)--(3,4)--(5,6)"},
        {QPolygonF(QList<QPointF>{{0.5, 2}, {3, 4}}), "(0.5,2)--(3,4)"},
        {QRegion(0, 0, 1, 2).united(QRect(5, 0, 1, 2)), "(0x0)wh(1x2) U (5x0)wh(1x2)"}});
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.25, 0}, {0.5, 0.75}, {1, 1});
    expectShown({{curve, "(0.25,0)--(0.5,0.75)--(1,1)"}, {QVector2D(1.0F / 3, 2), "(0.333333,2)"},
        {QVector3D(1, 2, 3.5), "(1,2,3.5)"}, {QVector4D(1, 2, 3, 4.5), "(1,2,3,4.5)"},
        {QQuaternion(1, 2, 3, -4), "1 + 2i + 3j + -4k"},
        {QMatrix4x4(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16),
            "[[1,2,3,4],[5,6,7,8],[9,10,11,12],[13,14,15,16]]"},
        {QTransform(1, 2, 3, 4, 5, 6, 7, 8, 9), "[[1,4,7],[2,5,8],[3,6,9]]^t"}});
}

TEST(LogStr, ShowsColoursImagesFontsIconsAndCursors)
{
    QPalette palette;
    for (int role = 0; role <= QPalette::Window; ++role) {
        palette.setColor(static_cast<QPalette::ColorRole>(role), QColor(0, 0, role));
    }
    expectShown({{QColor(255, 128, 0, 7), "#ff8000"}, {QColor(), "invalid"},
        {QBrush(QColor(1, 2, 3)), "brush with color #010203"},
        {QBrush(QColor()), "colorless brush"},
        {palette,
            "{windowText: #000000, button: #000001, light: #000002, dark: #000004, mid: #000005, "
            "text: #000006, bright_text: #000007, base: #000009, window: #000009}"}});

    QPixmap pixmap(6, 4);
    pixmap.fill();
    const std::string pixmapText = "6x4:" + std::to_string(pixmap.depth()) + "bpp";
    expectShown(
        {{QImage(640, 480, QImage::Format_RGB32), "640x480:32bpp"}, {QImage(), "<null image>"},
            {QBitmap(3, 2), "3x2:1bpp"}, {QBitmap(), "<null bitmap>"}, {pixmap, pixmapText},
            {QPixmap(), "null"}, {QFont(u"%1"_s), QFont(u"%1"_s).toString().toStdString()}});

    const QString place = u" cursor at (%1, %2)"_s.arg(QCursor::pos().x()).arg(QCursor::pos().y());
    QBitmap shape(16, 8);
    shape.clear();
    EXPECT_EQ(logStr(QCursor(shape, shape)), u"16x8:1bpp"_s + place);
    EXPECT_EQ(logStr(QCursor(Qt::ArrowCursor)), u"null"_s + place);

    QIcon icon(pixmap);
    icon.addPixmap(pixmap.scaled(12, 8));
    struct Themed : QIconEngine {
        void paint(QPainter *, const QRect &, QIcon::Mode, QIcon::State) override {}
        QIconEngine *clone() const override { return new Themed; }
        QString iconName() override { return u"%1"_s; }
    };
    expectShown(
        {{QIcon(), "<null icon>"}, {icon, "icon with sizes 6x4:12x8"}, {QIcon(new Themed), "%1"}});
}

TEST(LogStr, ShowsWhatAVariantHolds)
{
    expectShown({{QVariant(), "QVariant(Null)"}, {QVariant::fromValue(nullptr), "QVariant(Null)"},
        {QVariant(5), "QVariant(5 as int)"},
        {QVariant(QMetaType::fromType<int>()), "QVariant(0 as int)"},
        {QVariant(quint64{1} << 63), "QVariant(9223372036854775808 as qulonglong)"},
        {QVariant(u"%2"_s), R"(QVariant("%2" as QString))"},
        {QVariant(1.5F), "QVariant(<?> as float)"},
        {QVariant::fromValue(QMarginsF()), "QVariant(<?> as QMarginsF)"},
        {QVariant(QStringList{u"a"_s, u"b"_s}), R"(QVariant(["a", "b"] as QStringList))"},
        {QVariant(QVariantList{1, QVariantList{true}}),
            "QVariant([QVariant(1 as int), QVariant([QVariant(true as bool)] as QVariantList)] as "
            "QVariantList)"},
        {QVariant(QVariantMap{{u"b"_s, 2}, {u"%2"_s, 1}}),
            R"(QVariant([("%2", QVariant(1 as int)), ("b", QVariant(2 as int))] as QVariantMap))"},
        {QVariant(QVariantHash{{u"%1"_s, 1}}),
            "QVariant({%1: QVariant(1 as int)} as QVariantHash)"},
        {QVariantHash(), "{}"}});
}

TEST(LogStr, ShowsAThousandNestedVariantsOnASmallStackAndCutsDeeperOnes)
{
    const auto nested = [](int depth) {
        QVariant value = 5;
        for (int i = 0; i < depth; ++i) {
            value = i % 3 == 0   ? QVariant(QVariantList{value})
                    : i % 3 == 1 ? QVariant(QVariantMap{{u"k"_s, value}})
                                 : QVariant(QVariantHash{{u"k"_s, value}});
        }
        return value;
    };
    const std::unique_ptr<QThread> thread(QThread::create([&nested] {
        const QString full = logStr(nested(1000));
        EXPECT_TRUE(full.contains(u"{k: QVariant([(\"k\", QVariant([QVariant(5 as int)] as "_s));
        EXPECT_EQ(full.count(u"QVariant("_s), 1001);
        EXPECT_EQ(full.count(u'…'), 0);
        const QString cut = logStr(nested(1500));
        EXPECT_EQ(cut.count(u"QVariant("_s), 1000);
        EXPECT_EQ(cut.count(u'…'), 1);
    }));
    thread->setStackSize(1024 * 1024);
    thread->start();
    thread->wait();
}

TEST(LogStr, Knows51TypesInVariants)
{
    QStringList known;
    for (int type = QMetaType::UnknownType + 1; type <= QMetaType::LastGuiType; ++type) {
        if (QMetaType::isRegistered(type) &&
            logStr(QVariant(QMetaType(type))) != u"QVariant(Null)"_s) {
            known += QString::fromUtf8(QMetaType(type).name());
        }
    }
    EXPECT_EQ(known.size(), 51) << known.join(u' ').toStdString();
}

TEST(LogStr, ShowsContainersOfTypesWithAForm)
{
    expectShown({{std::vector<int>{1, 2}, "[1, 2]"}, {std::vector<int>(), "[]"},
        {std::vector<bool>{true, false}, "[true, false]"},
        {QStringList{u"a, b"_s, u"%1"_s}, R"(["a, b", "%1"])"},
        {std::vector<std::vector<QPoint>>{{{1, 2}}, {}}, "[[(1,2)], []]"},
        {QList<std::optional<double>>{1.5, std::nullopt}, "[[1.5], []]"},
        {QVariantList{1}, "[QVariant(1 as int)]"}, {QList<QByteArray>{"", "a", ""}, "[, a, ]"},
        {std::vector<QList<Mine>>{{{1}, {2}}}, "[[mine 1, mine 2]]"},
        {std::optional(Mine{3}), "[mine 3]"}, {std::array{'a', 'b'}, "['a', 'b']"},
        {std::pair(true, std::pair(1, u"%1"_s)), R"((true, (1, "%1")))"},
        {QMap<QString, QList<Mine>>{{u"b"_s, {}}, {u"a"_s, {{1}}}}, R"({"a": [mine 1], "b": []})"},
        {std::map<int, std::array<bool, 0>, std::greater<>>{{1, {}}, {2, {}}}, "{2: [], 1: []}"},
        {QVariantMap{{u"b"_s, 1}, {u"a"_s, 2}}, "{a: QVariant(2 as int), b: QVariant(1 as int)}"}});
    const QSet<int> set{1, 2, 3};
    EXPECT_EQ(logStr(set), logStr(set.values()));
}

} // namespace
} // namespace Vyn
