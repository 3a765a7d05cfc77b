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
using namespace std::string_literals;

template<class T>
const T *const kNull = nullptr;

void expectShown(std::initializer_list<std::pair<QString, std::string>> rows)
{
    for (const auto &[shown, text] : rows) {
        EXPECT_EQ(shown.toStdString(), text);
    }
}

TEST(LogStr, ShowsTextAsALiteral)
{
    expectShown({{logStr(u"tab\t\"é\" %1"_s), R"("tab\t\"é\" %1")"}, {logStr(""), R"("")"},
        {logStr("é"), R"("é")"}, {logStr(reinterpret_cast<const unsigned char *>("é")), R"("é")"},
        {logStr(u"😀"), R"("😀")"}, {logStr(U"😀"), R"("😀")"}, {logStr(L"😀"), R"("😀")"},
        {logStr(std::string("é")), R"("é")"}, {logStr(std::u16string(u"😀")), R"("😀")"},
        {logStr(std::u32string(U"😀")), R"("😀")"}, {logStr(std::wstring(L"😀")), R"("😀")"},
        {logStr(std::string_view("é\0é", 3)), "\"é\0\""s}, {logStr(std::string_view()), R"("")"},
        {logStr(QStringView(u"é\"%1")), R"("é\"%1")"}, {logStr(QLatin1String("\xE9")), R"("é")"},
        {logStr(std::filesystem::path(u"a/尺\t")), R"("a/尺\t")"}});
    char buffer[] = "in a buffer";
    expectShown({{logStr(buffer), R"("in a buffer")"}, {logStr(kNull<char>), "<null string>"},
        {logStr(kNull<unsigned char>), "<null string>"}, {logStr(kNull<char16_t>), "<null string>"},
        {logStr(kNull<char32_t>), "<null string>"}, {logStr(kNull<wchar_t>), "<null string>"}});
}

TEST(LogStr, ShowsCharactersAndNumbers)
{
    expectShown({{logStr('a'), "'a'"}, {logStr('\n'), R"('\n')"}, {logStr('\''), "'''"},
        {logStr('"'), R"('\"')"}, /* half of a UTF-8 character */ {logStr('\xE9'), "'\uFFFD'"},
        {logStr(static_cast<unsigned char>('a')), "'a'"}, {logStr(QChar(u'é')), "'é'"},
        {logStr(u'é'), "'é'"}, {logStr(U'😀'), "'😀'"}, {logStr(L'é'), "'é'"},
        {logStr(char32_t{QChar::ByteOrderMark}), "'\uFEFF'"},
        {logStr(wchar_t{QChar::ByteOrderMark}), "'\uFEFF'"}});
    EXPECT_EQ(logStr('\0'), u"'\0'"_s);
    EXPECT_EQ(logStr(u"a"_s % QChar(u'b')), u"\"ab\""_s);
    expectShown({{logStr(true), "true"}, {logStr(false), "false"}, {logStr(1.0F / 3), "0.33333334"},
        {logStr(1.0 / 3), "0.333333"}, {logStr(1e20), "1e+20"}, {logStr(5), "5"},
        {logStr(short{-5}), "-5"},
        {logStr(std::numeric_limits<qint64>::min()), "-9223372036854775808"},
        {logStr(std::numeric_limits<quint64>::max()), "18446744073709551615"}});
}

TEST(LogStr, RefusesWhatMerelyConverts)
{
    static_assert(HasForm<int> && HasForm<char *> && HasForm<QStringList>);
    static_assert(!HasForm<int *> && !HasForm<void *> && !HasForm<const volatile void *>);
    static_assert(!HasForm<std::nullptr_t> && !HasForm<signed char *> && !HasForm<void (*)()>);
    static_assert(!HasForm<int Mine::*> && !HasForm<Unscoped> && !HasForm<Scoped>);
    static_assert(!HasForm<Qt::GlobalColor> && !HasForm<Qt::CursorShape>);
    static_assert(!HasForm<signed char> && !HasForm<char8_t> && !HasForm<long double>);
    static_assert(!HasForm<std::true_type> && !HasForm<QLatin1Char> && !HasForm<QGradient>);
    static_assert(!HasForm<std::set<int>> && !HasForm<QHash<int, int>>);
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
    expectShown({{logStr(QByteArray("a b/\xFF%")), "a%20b%2F%FF%25"}, {logStr(bits), "[0110]"},
        {logStr(QBitArray()), "[]"}, {logStr(date), "2024-02-29"}, {logStr(time), "23:59:58.007"},
        {logStr(QDateTime(date, time)), "2024-02-29 23:59:58.007"}, {logStr(QDate()), ""},
        {logStr(QLocale(u"de_CH"_s)), "de_CH"},
        {logStr(QUrl(u"file:///a b/%25"_s)), "file:///a b/%25"},
        {logStr(QUuid()), "{00000000-0000-0000-0000-000000000000}"},
        {logStr(QKeySequence(Qt::CTRL | Qt::Key_S)), "Ctrl+S"}});
    using Expression = QRegularExpression;
    expectShown({{logStr(Expression(u"%2"_s)), "/%2/"},
        {logStr(
             Expression(u"a+"_s, Expression::MultilineOption | Expression::CaseInsensitiveOption)),
            "/a+/im"},
        {logStr(Expression(u"a"_s, Expression::PatternOptions(0x7F))), "/a/ismxUnu"}});
}

TEST(LogStr, ShowsWhereAnIndexStands)
{
    QStandardItemModel model(3, 4);
    QModelIndex index = model.index(2, 3);
    expectShown({{logStr(QModelIndex()), "()"}, {logStr(QPersistentModelIndex()), "()"},
        {logStr(index), "(2, 3)"}, {logStr(QPersistentModelIndex(index)), "(2, 3)"}});
    for (int i = 0; i < 2; ++i) {
        model.itemFromIndex(index)->appendRow(new QStandardItem);
        index = model.index(0, 0, index);
    }
    expectShown({{logStr(index), "(0, 0, depth=2)"}});
}

TEST(LogStr, ShowsGeometryVectorsAndMatrices)
{
    expectShown({{logStr(QPoint(1, -2)), "(1,-2)"}, {logStr(QPointF(0.5, 1e7)), "(0.5,1e+07)"},
        {logStr(QSize(3, 4)), "3x4"}, {logStr(QSizeF(1.0 / 3, 4)), "0.333333x4"},
        {logStr(QRect(1, 2, 3, 4)), "(1x2)wh(3x4)"},
        {logStr(QRectF(0.5, 2, 3, 4.25)), "(0.5x2)wh(3x4.25)"},
        {logStr(QLine(0, 0, 5, 6)), "(0,0)--(5,6)"},
        {logStr(QLineF(0.5, 0, 5, 6)), "(0.5,0)--(5,6)"}, {logStr(QPolygon()), ""},
        {logStr(QPolygon({{1, 2}, {3, 4}, {5, 6}})), "(1,2)--(3,4)--(5,6)"},
        {logStr(QPolygonF(QList<QPointF>{{0.5, 2}, {3, 4}})), "(0.5,2)--(3,4)"},
        {logStr(QRegion(0, 0, 1, 2).united(QRect(5, 0, 1, 2))), "(0x0)wh(1x2) U (5x0)wh(1x2)"}});
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.25, 0}, {0.5, 0.75}, {1, 1});
    expectShown({{logStr(curve), "(0.25,0)--(0.5,0.75)--(1,1)"},
        {logStr(QVector2D(1.0F / 3, 2)), "(0.333333,2)"},
        {logStr(QVector3D(1, 2, 3.5)), "(1,2,3.5)"},
        {logStr(QVector4D(1, 2, 3, 4.5)), "(1,2,3,4.5)"},
        {logStr(QQuaternion(1, 2, 3, -4)), "1 + 2i + 3j + -4k"},
        {logStr(QMatrix4x4(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16)),
            "[[1,2,3,4],[5,6,7,8],[9,10,11,12],[13,14,15,16]]"},
        {logStr(QTransform(1, 2, 3, 4, 5, 6, 7, 8, 9)), "[[1,4,7],[2,5,8],[3,6,9]]^t"}});
}

TEST(LogStr, ShowsColours)
{
    expectShown({{logStr(QColor(255, 128, 0, 7)), "#ff8000"}, {logStr(QColor()), "invalid"},
        {logStr(QBrush(QColor(1, 2, 3))), "brush with color #010203"},
        {logStr(QBrush(QColor())), "colorless brush"}});

    QPalette palette;
    int shade = 1;
    for (const auto role :
        {QPalette::WindowText, QPalette::Button, QPalette::Light, QPalette::Dark, QPalette::Mid,
            QPalette::Text, QPalette::BrightText, QPalette::Base, QPalette::Window}) {
        palette.setColor(role, QColor(0, 0, shade++));
    }
    palette.setColor(QPalette::Mid, QColor());
    expectShown({{logStr(palette),
        "{windowText: #000001, button: #000002, light: #000003, dark: #000004, mid: invalid, "
        "text: #000006, bright_text: #000007, base: #000008, window: #000008}"}});
}

TEST(LogStr, ShowsImagesFontsIconsAndCursors)
{
    QPixmap pixmap(6, 4);
    pixmap.fill();
    const std::string pixmapText = "6x4:" + std::to_string(pixmap.depth()) + "bpp";
    expectShown({{logStr(QImage(640, 480, QImage::Format_RGB32)), "640x480:32bpp"},
        {logStr(QImage()), "<null image>"}, {logStr(QBitmap(3, 2)), "3x2:1bpp"},
        {logStr(QBitmap()), "<null bitmap>"}, {logStr(pixmap), pixmapText},
        {logStr(QPixmap()), "null"},
        {logStr(QFont(u"%1"_s)), QFont(u"%1"_s).toString().toStdString()}});

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
    expectShown({{logStr(QIcon()), "<null icon>"}, {logStr(icon), "icon with sizes 6x4:12x8"},
        {logStr(QIcon(new Themed)), "%1"}});
}

TEST(LogStr, ShowsWhatAVariantHolds)
{
    expectShown({{logStr(QVariant()), "QVariant(Null)"},
        {logStr(QVariant::fromValue(nullptr)), "QVariant(Null)"},
        {logStr(QVariant(5)), "QVariant(5 as int)"},
        {logStr(QVariant(QMetaType::fromType<int>())), "QVariant(0 as int)"},
        {logStr(QVariant(quint64{1} << 63)), "QVariant(9223372036854775808 as qulonglong)"},
        {logStr(QVariant(u"%2"_s)), R"(QVariant("%2" as QString))"},
        {logStr(QVariant(1.5F)), "QVariant(<?> as float)"},
        {logStr(QVariant::fromValue(QMarginsF())), "QVariant(<?> as QMarginsF)"},
        {logStr(QVariant(QStringList{u"a"_s, u"b"_s})), R"(QVariant(["a", "b"] as QStringList))"},
        {logStr(QVariant(QVariantList{1, QVariantList{true}})),
            "QVariant([QVariant(1 as int), QVariant([QVariant(true as bool)] as QVariantList)] as "
            "QVariantList)"},
        {logStr(QVariant(QVariantMap{{u"b"_s, 2}, {u"%2"_s, 1}})),
            R"(QVariant([("%2", QVariant(1 as int)), ("b", QVariant(2 as int))] as QVariantMap))"},
        {logStr(QVariant(QVariantHash{{u"%1"_s, 1}})),
            "QVariant({%1: QVariant(1 as int)} as QVariantHash)"},
        {logStr(QVariantHash()), "{}"}});
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
        for (const int depth : {1001, 1500}) {
            const QString cut = logStr(nested(depth));
            EXPECT_EQ(cut.count(u"QVariant("_s), 1000);
            EXPECT_EQ(cut.count(u'…'), 1);
        }
    }));
    thread->setStackSize(1024 * 1024);
    thread->start();
    thread->wait();
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

TEST(LogStr, ShowsContainersOfWhatHasAForm)
{
    expectShown({{logStr(std::vector<int>{1, 2}), "[1, 2]"}, {logStr(std::vector<int>()), "[]"},
        {logStr(std::vector<bool>{true, false}), "[true, false]"},
        {logStr(QStringList{u"a, b"_s, u"%1"_s}), R"(["a, b", "%1"])"},
        {logStr(std::vector<std::vector<QPoint>>{{{1, 2}}, {}}), "[[(1,2)], []]"},
        {logStr(QList<std::optional<double>>{1.5, std::nullopt}), "[[1.5], []]"},
        {logStr(QVariantList{1}), "[QVariant(1 as int)]"},
        {logStr(QList<QByteArray>{"", "a", ""}), "[, a, ]"},
        {logStr(std::vector<QList<Mine>>{{{1}, {2}}}), "[[mine 1, mine 2]]"},
        {logStr(std::optional(Mine{3})), "[mine 3]"}, {logStr(std::array{'a', 'b'}), "['a', 'b']"},
        {logStr(std::pair(true, std::pair(1, u"%1"_s))), R"((true, (1, "%1")))"},
        {logStr(QMap<QString, QList<Mine>>{{u"b"_s, {}}, {u"a"_s, {{1}}}}),
            R"({"a": [mine 1], "b": []})"},
        {logStr(std::map<int, std::array<bool, 0>, std::greater<>>{{1, {}}, {2, {}}}),
            "{2: [], 1: []}"},
        {logStr(QVariantMap{{u"b"_s, 1}, {u"a"_s, 2}}),
            "{a: QVariant(2 as int), b: QVariant(1 as int)}"}});
    const QSet<int> set{1, 2, 3};
    EXPECT_EQ(logStr(set), logStr(set.values()));
}

} // namespace
} // namespace Vyn
