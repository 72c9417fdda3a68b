#include "vx/core/VxLargeIni.h"
#include "vx/core/VxVector.h"
#include "vx/graph/VxDraw.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxGraphics.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>
#include "support/ExpectThrowMessage.h"

#include <memory>
#include <unistd.h>

using namespace vx;

namespace {

TVxIniList ListOf(const QStringList& lines)
{
    TVxIniList list;
    list.Lines() = lines;
    return list;
}

void WriteBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

QString FileText(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QStringLiteral("<missing>");
    return QString::fromUtf8(f.readAll());
}

} // namespace

// ---------------------------------------------------------------- layout of writes

TEST(VxIniList, WriteStringLayout)
{
    const QString nul = QString(QChar(0));
    const struct {
        const char* name;
        QStringList before;
        QString section, key, value;
        QStringList after;
    } rows[] = {
        {"new section in empty list", {}, "S", "K", "V", {"", "[S]", "K=V"}},
        {"second key goes before the separator", {"", "[A]", "a=1", "", "[B]", "b=1"}, "A", "c", "2",
         {"", "[A]", "a=1", "c=2", "", "[B]", "b=1"}},
        {"key at end of last section", {"", "[A]", "a=1"}, "a", "b", "2", {"", "[A]", "a=1", "b=2"}},
        {"existing key replaced, case-insensitive", {"[A]", "Size=1", "x=2"}, "A", "SIZE", "3",
         {"[A]", "SIZE=3", "x=2"}},
        {"prefix without = is another key", {"[A]", "Sizes=1"}, "A", "Size", "3", {"[A]", "Sizes=1", "Size=3"}},
        {"empty section: before the empty line", {"[A]", "", "[B]"}, "A", "k", "v", {"[A]", "k=v", "", "[B]"}},
        {"new section appended after others", {"[A]", "a=1"}, "B", "b", "2", {"[A]", "a=1", "", "[B]", "b=2"}},
        {"NUL cuts the line", {}, "S", "K", "ab" + nul + "cd", {"", "[S]", "K=ab"}},
        {"NUL in key cuts everything after it", {}, "S", "K" + nul + "x", "v", {"", "[S]", "K"}},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        TVxIniList list = ListOf(r.before);
        list.WriteString(r.section, r.key, r.value);
        EXPECT_EQ(list.Lines(), r.after);
        EXPECT_TRUE(list.Modified());
    }
}

TEST(VxIniList, ReadStringMatching)
{
    TVxIniList list = ListOf({"[Graph]", "Size=3", "sizes=4", "Name=a=b", "", "[Next]", "Other=1",
                              "[Empty]", "[Last]", "z=9"});
    const struct {
        const char* section;
        const char* key;
        const char* expected;
    } rows[] = {
        {"Graph", "size", "3"}, {"GRAPH", "Sizes", "4"}, {"Last", "z", "9"}, {"Missing", "z", "dflt"},
        {"Graph", "Siz", "dflt"}, {"Graph", "Name", "a=b"}, // only the first "Key=" is cut off
        {"Graph", "Other", "dflt"},                          // scan stops at the next head
        {"Empty", "z", "dflt"}, // a head right after the head ends the section
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(std::string(r.section) + "/" + r.key);
        EXPECT_EQ(list.ReadString(r.section, r.key, "dflt"), QString::fromLatin1(r.expected));
    }
    EXPECT_FALSE(list.Modified());
}

TEST(VxIniList, HeadOnLastLineIsAListIndexError)
{
    TVxIniList list = ListOf({"[A]", "a=1", "", "[Tail]"});
    VX_EXPECT_THROW_MSG(list.ReadString("Tail", "a", ""), EListError, EListError::IndexOutOfBounds(4).Message());
    EXPECT_THROW(list.WriteString("Tail", "a", "1"), EListError);
    EXPECT_THROW(list.ReadBool("Tail", "a", true), EListError);
    EXPECT_THROW(list.ReadFont("Tail", "F", *std::make_unique<TFont>()), EListError);
    EXPECT_EQ(list.ReadInteger("Tail", "a", 42), 42);
    EXPECT_EQ(list.ReadReal("Tail", "a", 2.5), 2.5);
}

TEST(VxIniList, SectionQueriesAndErase)
{
    TVxIniList list = ListOf({"", "[A]", "a=1", "noeq", "", "[B]", "b=2", "c=3", "", "[C", "d=4"});
    QStringList s;
    list.ReadSections(s);
    EXPECT_EQ(s, (QStringList{"A", "B", "C"}));
    list.ReadSection("a", s);
    EXPECT_EQ(s, (QStringList{"a", "noeq"}));
    list.ReadSectionValues("B", s);
    EXPECT_EQ(s, (QStringList{"b=2", "c=3"}));
    list.ReadSection("Missing", s);
    EXPECT_TRUE(s.isEmpty());
    EXPECT_TRUE(list.SectionExists("b"));
    EXPECT_FALSE(list.SectionExists("C")); // "[C" is no head of C

    list.EraseSection("B");
    EXPECT_EQ(list.Lines(), (QStringList{"", "[A]", "a=1", "noeq", "", "[C", "d=4"}));
    EXPECT_TRUE(list.Modified());
    list.EraseSection("A");
    EXPECT_EQ(list.Lines(), (QStringList{"", "[C", "d=4"}));
}

// ---------------------------------------------------------------- typed values

TEST(VxIniList, NumbersAndBooleans)
{
    TVxIniList list = ListOf({"[N]", "i=42", "neg=-7 apples", "txt=abc", "empty=", "r=2.5e-3",
                              "b1=1", "bt=true", "bT=TRUE", "by=yes", "b0=0", "be="});
    for (auto [key, expected] : {std::pair{"i", 42}, {"neg", -7}, {"txt", 5}, {"empty", 5}, {"none", 5}})
        EXPECT_EQ(list.ReadInteger("N", key, 5), expected) << key;
    EXPECT_DOUBLE_EQ(list.ReadReal("N", "r", 0), 2.5e-3);
    EXPECT_DOUBLE_EQ(list.ReadReal("N", "txt", 1.5), 1.5);

    // {key, default, expected}: only "1" and "true" in any case are true; empty keeps the default.
    for (auto [key, dflt, expected] : {std::tuple{"b1", false, true}, {"bt", false, true}, {"bT", false, true},
                                       {"by", true, false}, {"b0", true, false}, {"be", true, true},
                                       {"none", true, true}, {"none", false, false}})
        EXPECT_EQ(list.ReadBool("N", key, dflt), expected) << key << " " << dflt;

    TVxIniList w;
    w.WriteInteger("S", "i", -12);
    w.WriteReal("S", "r", 0.1);
    w.WriteRealDigits("S", "d", 3.14159265, 4);
    w.WriteBool("S", "t", true);
    w.WriteBool("S", "f", false);
    EXPECT_EQ(w.Lines(), (QStringList{"", "[S]", "i=-12", "r=0.1", "d=3.14", "t=1", "f=0"}));
}

TEST(VxIniList, ArraysAndVectors)
{
    TVxIniList list;
    list.WriteRealArray("A", "r", {1.5, -2, 1e-20, 99}, 2);
    list.WriteIntArray("A", "i", {3, -4, 5});
    TVxRealVector v, empty;
    v.Add(0.25);
    v.Add(-1);
    list.WriteRealVector("A", "v", v);
    list.WriteRealVector("A", "e", empty);
    list.WriteRealPos("A", "p", {1.25, -3});
    EXPECT_EQ(list.Lines(), (QStringList{"", "[A]", "r=1.5;-2;1E-20", "i=3;-4;5", "v=0.25;-1", "e=", "p=1.25;-3"}));

    TVxRealArray r(2, 7.0), untouched{7, 8};
    list.ReadRealArray("A", "r", r, 2); // grows the array
    EXPECT_EQ(r, (TVxRealArray{1.5, -2, 1e-20}));
    list.ReadRealArray("A", "missing", untouched, 1);
    EXPECT_EQ(untouched, (TVxRealArray{7, 8}));
    TVxIntegerArray ia(3);
    list.ReadIntArray("A", "i", ia);
    EXPECT_EQ(ia, (TVxIntegerArray{3, -4, 5}));
    TVxRealVector back;
    back.Add(100);
    list.ReadRealVector("A", "v", back);
    EXPECT_EQ(back.ToArray(), (TVxRealArray{0.25, -1}));
    list.ReadRealVector("A", "e", back);
    EXPECT_EQ(back.Count(), 0);
    TVxRealPos p{9, 9};
    list.ReadRealPos("A", "p", p);
    EXPECT_EQ(p, (TVxRealPos{1.25, -3}));
}

TEST(VxIniList, ShortAndMalformedValues)
{
    TVxIniList list = ListOf({"[A]", "r=1;2", "i=4;5", "p=7", "q=1;1E999", "v=1;2;x;", "w=1;2E999;3", "[XY]",
                              "a=1;2", "junk", "b=3 4", "c=5", "h=1E999;0", "d=6;7;8"});
    TVxRealArray r{0, 0, 9};
    EXPECT_THROW(list.ReadRealArray("A", "r", r, 2), EConvertError); // too few numbers
    EXPECT_EQ(r, (TVxRealArray{1, 2, 9}));
    // The integer extraction leaves a last number in place, so it is read again.
    TVxIntegerArray ia{0, 0, 9};
    list.ReadIntArray("A", "i", ia);
    EXPECT_EQ(ia, (TVxIntegerArray{4, 5, 5}));

    // A position needs two numbers within the double range; a vector ends at a bad element.
    for (const char* key : {"p", "q"}) {
        TVxRealPos p{9, 9};
        list.ReadRealPos("A", key, p);
        EXPECT_EQ(p, (TVxRealPos{9, 9})) << key;
    }
    TVxRealVector v;
    list.ReadRealVector("A", "v", v);
    EXPECT_EQ(v.ToArray(), (TVxRealArray{1, 2}));
    list.ReadRealVector("A", "w", v);
    EXPECT_EQ(v.ToArray(), (TVxRealArray{1}));
    TVxRealVector x, y;
    x.Add(42);
    list.ReadXYVector("XY", x, y);
    EXPECT_EQ(x.ToArray(), (TVxRealArray{1, 3, 6}));
    EXPECT_EQ(y.ToArray(), (TVxRealArray{2, 4, 7}));
}

TEST(VxIniList, FontLineAndAreaRoundTrip)
{
    // Read from text (key case ignored) and written back: the same lines.
    const QStringList text{"", "[F]", "Title.Name=DejaVu Serif", "Title.Charset=2", "Title.Color=8388608",
                           "Title.Size=13", "Title.Bold=1", "Title.Italic=0", "Title.Underline=0",
                           "Title.StrikeOut=1", "Grid.Visible=0", "Grid.Color=32768", "Grid.Style=3",
                           "Grid.Width=3", "Fill.Visible=1", "Fill.Color=255", "Fill.Style=6", "Fill.DrawXORed=0"};
    TFont font;
    TVxLineStyle line;
    TVxAreaStyle area;
    const TVxIniList list = ListOf(text);
    list.ReadFont("F", "title", font);
    list.ReadLine("F", "Grid", line);
    list.ReadArea("F", "fill", area);
    EXPECT_TRUE(font.Name() == "DejaVu Serif" && font.Charset() == SYMBOL_CHARSET && font.Color() == clNavy
                && font.Size() == 13 && font.Style() == (TFontStyles{fsBold, fsStrikeOut}));
    EXPECT_TRUE(!line.Visible() && line.Color() == clGreen && line.Style() == psDashDot && line.Width() == 3);
    EXPECT_TRUE(area.Visible() && area.Color() == clRed && area.Style() == bsCross && !area.DrawXOred());
    TVxIniList back;
    back.WriteFont("F", "Title", font);
    back.WriteLine("F", "Grid", line);
    back.WriteArea("F", "Fill", area);
    EXPECT_EQ(back.Lines(), text);

    // Missing sub-keys and unknown ordinals leave the current values.
    TVxLineStyle kept;
    kept.SetColor(clBlue);
    ListOf({"[P]", "Pen.Width=5", "Pen.Style=99"}).ReadLine("P", "Pen", kept);
    EXPECT_EQ(std::make_tuple(kept.Color(), kept.Style(), kept.Width()), std::make_tuple(clBlue, psSolid, 5));
}

// ---------------------------------------------------------------- windows and components

TEST(VxIniList, WindowPlacementRoundTripAndOffScreenRule)
{
    QWidget form;
    form.move(40, 30);
    form.resize(320, 200);
    TVxIniList list;
    list.WriteFormPrms("Win", "Main", &form);
    EXPECT_EQ(list.ReadInteger("Win", "Main.State", -1), 0);
    EXPECT_EQ(list.ReadInteger("Win", "Main.Width", -1), 320);
    EXPECT_EQ(list.ReadInteger("Win", "Main.Height", -1), 200);

    QWidget other;
    other.move(1, 1);
    list.ReadFormPrms("Win", "Main", &other);
    EXPECT_EQ(other.pos(), form.pos());
    EXPECT_EQ(other.size(), QSize(320, 200));

    QScreen* screen = QGuiApplication::primaryScreen();
    ASSERT_NE(screen, nullptr);
    const QRect area = screen->geometry();
    list.WriteInteger("Win", "Main.Left", area.width() + 10);
    list.ReadFormPos("Win", "Main", &other);
    EXPECT_TRUE(area.contains(other.frameGeometry().center()));

    list.WriteInteger("Win", "Main.State", 2);
    list.ReadFormPrms("Win", "Main", &other);
    EXPECT_TRUE(other.windowState() & Qt::WindowMaximized);
}

TEST(VxIniList, ComponentReferencesByNamePath)
{
    QWidget form;
    form.setObjectName("IniTestForm");
    QWidget holder(&form); // unnamed container: left out of the path
    QObject graph(&holder);
    graph.setObjectName("Graph1");
    QObject axis(&graph);
    axis.setObjectName("Axis1");
    QObject unnamed(&form);

    TVxIniList list;
    list.WriteComponentRef("R", "Axis", &axis);
    list.WriteComponentRef("R", "None", nullptr);
    list.WriteComponentRef("R", "Anon", &unnamed);
    list.WriteString("R", "Bad", "IniTestForm.Nothing");
    EXPECT_EQ(list.ReadString("R", "Axis", ""), QStringLiteral("IniTestForm.Graph1.Axis1"));
    EXPECT_EQ(list.ReadString("R", "None", "x"), QString());
    EXPECT_EQ(list.ReadString("R", "Anon", "x"), QString());

    QObject* ref = nullptr;
    list.ReadComponentRef("R", "Axis", ref);
    EXPECT_EQ(ref, &axis);
    for (const char* key : {"Bad", "None", "Missing"}) {
        SCOPED_TRACE(key);
        ref = &graph;
        list.ReadComponentRef("R", key, ref);
        EXPECT_EQ(ref, &graph);
    }

    QWidget* typed = &holder;
    list.ReadComponentRef("R", "Axis", typed); // not a QWidget: kept
    EXPECT_EQ(typed, &holder);
    QPointer<QObject> guarded;
    list.ReadComponentRef("R", "Axis", guarded);
    EXPECT_EQ(guarded.data(), &axis);
}

// ---------------------------------------------------------------- file

TEST(VxLargeIniFile, SavesOnDestructionWithoutLeadingEmptyLines)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("settings.ini");
    {
        TVxLargeIniFile ini(path);
        EXPECT_EQ(ini.Count(), 0);
        ini.WriteString("S", "K", "V");
        EXPECT_EQ(ini.Lines(), (QStringList{"", "[S]", "K=V"}));
    }
    EXPECT_EQ(FileText(path), QStringLiteral("[S]\nK=V\n"));
    {
        TVxLargeIniFile ini(path);
        EXPECT_EQ(ini.Filename(), path);
        EXPECT_EQ(ini.ReadString("S", "K", ""), QStringLiteral("V"));
        ini.WriteString("T", "a", "b");
    }
    EXPECT_EQ(FileText(path), QStringLiteral("[S]\nK=V\n\n[T]\na=b\n"));

    // Untouched files are not rewritten; any line ends are read.
    WriteBytes(path, "[S]\r\nK=V\r\n");
    EXPECT_EQ(TVxLargeIniFile(path).Lines(), (QStringList{"[S]", "K=V"}));
    EXPECT_EQ(FileText(path), QStringLiteral("[S]\r\nK=V\r\n"));
    // A byte-order mark is skipped; a file that is not valid UTF-8 is Latin-1.
    for (const QByteArray& bytes : {QByteArray("\xEF\xBB\xBF[S]\nK=\xC2\xB5m\n"), QByteArray("[S]\rK=\xB5m")}) {
        WriteBytes(path, bytes);
        EXPECT_EQ(TVxLargeIniFile(path).ReadString("S", "K", ""), QStringLiteral("\u00B5m")) << bytes.size();
    }
}

TEST(VxLargeIniFile, FailedSaveRaisesAndKeepsOldFile)
{
    QTemporaryDir dir;
    const QString missingDir = dir.filePath("no/such/dir/x.ini");
    auto ini = std::make_unique<TVxLargeIniFile>(missingDir);
    ini->WriteString("S", "K", "V");
    EXPECT_THROW(ini->Save(), EFCreateError);
    EXPECT_NO_THROW(ini.reset()); // the destructor swallows the same failure

    // A directory in place of the file cannot be replaced.
    const QString taken = dir.filePath("taken.ini");
    TVxLargeIniFile blocked(taken);
    blocked.WriteString("S", "K", "V");
    ASSERT_TRUE(QDir(dir.path()).mkdir("taken.ini"));
    EXPECT_THROW(blocked.Save(), EInOutError);
    EXPECT_TRUE(QFileInfo(taken).isDir());

    // A file that cannot be written is kept as it was (needs a user that file permissions
    // apply to).
    const QString path = dir.filePath("keep.ini");
    {
        TVxLargeIniFile first(path);
        first.WriteString("S", "K", "old");
    }
    if (::geteuid() == 0)
        GTEST_SKIP() << "permissions do not apply to root";
    ASSERT_TRUE(QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    {
        TVxLargeIniFile second(path);
        second.WriteString("S", "K", "new");
        EXPECT_THROW(second.Save(), EInOutError);
    }
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(FileText(path), QStringLiteral("[S]\nK=old\n"));
}
