#include "vx/core/VxLargeIni.h"

#include "vx/core/VxStrings.h"
#include "vx/core/VxVector.h"
#include "vx/graph/VxDraw.h"
#include "vx/platform/VxComponent.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxGraphics.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSaveFile>
#include <QScreen>
#include <QStringDecoder>
#include <QWidget>

namespace vx {

namespace {

QString SubKey(const QString& Key, const char* Suffix)
{
    return Key + QLatin1String(Suffix);
}

QString KeyPrefix(const QString& Key)
{
    return Key + QLatin1Char('=');
}

// The value part of a "Key=Value" line (the whole line when it has no "=").
QString ValuePart(const QString& Line)
{
    const int eq = Line.indexOf(QLatin1Char('='));
    return eq < 0 ? Line : Line.mid(eq + 1);
}

// The platform's window states, as stored in settings.
enum TWindowState { wsNormal = 0, wsMinimized = 1, wsMaximized = 2 };

int WindowStateOf(const QWidget* Form)
{
    const Qt::WindowStates s = Form->windowState();
    if (s & Qt::WindowMinimized)
        return wsMinimized;
    if (s & (Qt::WindowMaximized | Qt::WindowFullScreen))
        return wsMaximized;
    return wsNormal;
}

void ApplyWindowState(QWidget* Form, int State)
{
    Qt::WindowStates s = Form->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen);
    if (State == wsMinimized)
        s |= Qt::WindowMinimized;
    else if (State == wsMaximized)
        s |= Qt::WindowMaximized;
    Form->setWindowState(s);
}

// Centres the window on its screen when its placement lies off the screen.
void KeepOnScreen(QWidget* Form)
{
    QScreen* screen = Form->screen() ? Form->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->geometry();
    const int top = Form->y() - area.top();
    const int left = Form->x() - area.left();
    const bool off = top > area.height() || left > area.width() || top + Form->height() < 0
                     || left + Form->width() < 0;
    if (off) {
        const QSize frame = Form->frameGeometry().size();
        Form->move(area.left() + (area.width() - frame.width()) / 2,
                   area.top() + (area.height() - frame.height()) / 2);
    }
}

// Looks Name up among the descendants of Owner, breadth first (case-insensitive): the
// writer leaves unnamed intermediate owners out of a path.
QObject* FindDescendant(const QObject* Owner, const QString& Name)
{
    QObjectList level = Owner->children();
    while (!level.isEmpty()) {
        QObjectList next;
        for (QObject* o : level) {
            if (o->objectName().compare(Name, Qt::CaseInsensitive) == 0)
                return o;
            next += o->children();
        }
        level = next;
    }
    return nullptr;
}

QObject* ResolveComponentPath(const QString& Path)
{
    if (QObject* found = FindComponentByPath(Path))
        return found;
    const QStringList parts = Path.split(QLatin1Char('.'));
    QObject* obj = FindComponentByPath(parts.first());
    for (int i = 1; obj && i < parts.size(); ++i) {
        QObject* child = FindComponent(obj, parts[i]);
        obj = child ? child : FindDescendant(obj, parts[i]);
    }
    return obj;
}

} // namespace

// ---------------------------------------------------------------- text and lines

QString TVxIniList::Text() const
{
    if (FLines.isEmpty())
        return QString();
    return FLines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void TVxIniList::SetText(const QString& Value)
{
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    FLines = Value.split(lineBreak);
    if (!FLines.isEmpty() && FLines.last().isEmpty())
        FLines.removeLast(); // a final line break ends the last line, it starts none
}

const QString& TVxIniList::LineAt(int I) const
{
    if (I < 0 || I >= FLines.size())
        throw EListError::IndexOutOfBounds(I);
    return FLines[I];
}

int TVxIniList::FindSection(const QString& Section) const
{
    const QString head = QLatin1Char('[') + Section + QLatin1Char(']');
    for (int i = 0; i < FLines.size(); ++i) {
        const QString& line = FLines[i];
        if (line.size() == head.size() && IsHead(line) && line.compare(head, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

void TVxIniList::SectionRange(int Head, int& First, int& End) const
{
    First = Head + 1;
    End = First;
    while (End < FLines.size() && !IsHead(FLines[End]))
        ++End;
}

// ---------------------------------------------------------------- sections

void TVxIniList::ReadSections(QStringList& Strings) const
{
    Strings.clear();
    for (const QString& line : FLines) {
        if (!IsHead(line))
            continue;
        const int close = line.indexOf(QLatin1Char(']'));
        Strings.append(close < 0 ? line.mid(1) : line.mid(1, close - 1));
    }
}

bool TVxIniList::SectionExists(const QString& Section) const
{
    return FindSection(Section) >= 0;
}

void TVxIniList::ReadSection(const QString& Section, QStringList& Strings) const
{
    Strings.clear();
    const int head = FindSection(Section);
    if (head < 0)
        return;
    int first = 0, end = 0;
    SectionRange(head, first, end);
    for (int i = first; i < end; ++i) {
        const QString& line = FLines[i];
        if (line.isEmpty())
            continue;
        const int eq = line.indexOf(QLatin1Char('='));
        Strings.append(eq < 0 ? line : line.left(eq));
    }
}

void TVxIniList::ReadSectionValues(const QString& Section, QStringList& Strings) const
{
    Strings.clear();
    const int head = FindSection(Section);
    if (head < 0)
        return;
    int first = 0, end = 0;
    SectionRange(head, first, end);
    for (int i = first; i < end; ++i)
        if (!FLines[i].isEmpty())
            Strings.append(FLines[i]);
}

void TVxIniList::EraseSection(const QString& Section)
{
    FModified = true;
    const int head = FindSection(Section);
    if (head < 0)
        return;
    int first = 0, end = 0;
    SectionRange(head, first, end);
    FLines.remove(head, end - head);
}

// ---------------------------------------------------------------- strings

QString TVxIniList::FindValue(const QString& Section, const QString& Key, bool& Found) const
{
    Found = false;
    int i = FindSection(Section);
    if (i < 0)
        return QString();
    const QString prefix = KeyPrefix(Key);
    // The first line after the head is fetched unchecked: a head on the last line is an
    // index error, which the numeric readers swallow and the others pass on.
    ++i;
    do {
        const QString& line = LineAt(i);
        if (IsHead(line))
            break;
        if (line.startsWith(prefix, Qt::CaseInsensitive)) {
            Found = true;
            return line.mid(prefix.size());
        }
        ++i;
    } while (i < FLines.size());
    return QString();
}

QString TVxIniList::ReadString(const QString& Section, const QString& Key, const QString& Default) const
{
    bool found = false;
    const QString value = FindValue(Section, Key, found);
    return found ? value : Default;
}

void TVxIniList::WriteString(const QString& Section, const QString& Key, const QString& Value)
{
    FModified = true;
    QString line = KeyPrefix(Key) + Value;
    const int nul = line.indexOf(QChar(0));
    if (nul >= 0)
        line.truncate(nul);

    int i = FindSection(Section);
    if (i < 0) {
        FLines << QString() << QLatin1Char('[') + Section + QLatin1Char(']') << line;
        return;
    }
    // Scan to the key, an empty line or the end; a new key goes at the scan's stop, i.e.
    // after the last value line or before the empty line that closes the section.
    const QString prefix = KeyPrefix(Key);
    ++i;
    do {
        const QString& s = LineAt(i);
        if (s.startsWith(prefix, Qt::CaseInsensitive)) {
            FLines[i] = line;
            return;
        }
        if (s.isEmpty())
            break;
        ++i;
    } while (i < FLines.size());
    FLines.insert(i, line);
}

// ---------------------------------------------------------------- numbers

int TVxIniList::ReadInteger(const QString& Section, const QString& Key, int Default) const
{
    try {
        QString s = ReadString(Section, Key, QString());
        return s.isEmpty() ? Default : ExtractOneInt(s);
    } catch (...) {
        return Default;
    }
}

double TVxIniList::ReadReal(const QString& Section, const QString& Key, double Default) const
{
    try {
        QString s = ReadString(Section, Key, QString());
        return s.isEmpty() ? Default : ExtractOneReal(s);
    } catch (...) {
        return Default;
    }
}

void TVxIniList::WriteInteger(const QString& Section, const QString& Key, int Value)
{
    WriteString(Section, Key, QString::number(Value));
}

void TVxIniList::WriteReal(const QString& Section, const QString& Key, double Value)
{
    WriteString(Section, Key, RealToAmericanStr(Value));
}

void TVxIniList::WriteRealDigits(const QString& Section, const QString& Key, double Value, int Digits)
{
    WriteString(Section, Key, RealToAmericanStrDigits(Value, Digits));
}

bool TVxIniList::ReadBool(const QString& Section, const QString& Key, bool Default) const
{
    const QString s = ReadString(Section, Key, QString());
    if (s.isEmpty())
        return Default;
    return s == QLatin1String("1") || s.compare(QLatin1String("TRUE"), Qt::CaseInsensitive) == 0;
}

void TVxIniList::WriteBool(const QString& Section, const QString& Key, bool Value)
{
    WriteString(Section, Key, Value ? QStringLiteral("1") : QStringLiteral("0"));
}

// ---------------------------------------------------------------- arrays and vectors

void TVxIniList::WriteRealArray(const QString& Section, const QString& Key, const TVxRealArray& Values, int High)
{
    QStringList parts;
    const int last = std::min(High, int(Values.size()) - 1);
    for (int i = 0; i <= last; ++i)
        parts << RealToAmericanStr(Values[size_t(i)]);
    WriteString(Section, Key, parts.join(QLatin1Char(';')));
}

void TVxIniList::ReadRealArray(const QString& Section, const QString& Key, TVxRealArray& Values, int High) const
{
    QString s = ReadString(Section, Key, QString());
    if (s.isEmpty() || High < 0)
        return;
    if (Values.size() < size_t(High) + 1)
        Values.resize(size_t(High) + 1);
    for (int i = 0; i <= High; ++i)
        Values[size_t(i)] = ExtractOneReal(s);
}

void TVxIniList::WriteIntArray(const QString& Section, const QString& Key, const TVxIntegerArray& Values)
{
    QStringList parts;
    for (int v : Values)
        parts << QString::number(v);
    WriteString(Section, Key, parts.join(QLatin1Char(';')));
}

void TVxIniList::ReadIntArray(const QString& Section, const QString& Key, TVxIntegerArray& Values) const
{
    QString s = ReadString(Section, Key, QString());
    if (s.isEmpty())
        return;
    for (int& v : Values)
        v = ExtractOneInt(s);
}

void TVxIniList::WriteRealVector(const QString& Section, const QString& Key, const TVxCustomRealVector& Vector)
{
    QStringList parts;
    for (int i = 0; i < Vector.Count(); ++i)
        parts << RealToAmericanStr(Vector.Data()[i]);
    WriteString(Section, Key, parts.join(QLatin1Char(';')));
}

void TVxIniList::ReadRealVector(const QString& Section, const QString& Key, TVxRealVector& Vector) const
{
    QString s = ReadString(Section, Key, QString());
    Vector.Clear();
    // A malformed element (no number, or one beyond the double range) ends the list: the
    // numbers before it are kept.
    try {
        while (!s.isEmpty()) {
            const int before = s.size();
            Vector.Add(ExtractOneReal(s));
            if (s.size() == before)
                break;
        }
    } catch (const EConvertError&) {
    } catch (const EMathError&) {
    }
}

void TVxIniList::WriteRealPos(const QString& Section, const QString& Key, const TVxRealPos& Pos)
{
    WriteString(Section, Key, RealToAmericanStr(Pos.X) + QLatin1Char(';') + RealToAmericanStr(Pos.Y));
}

void TVxIniList::ReadRealPos(const QString& Section, const QString& Key, TVxRealPos& Pos) const
{
    QString s = ReadString(Section, Key, QString());
    if (s.isEmpty())
        return;
    try {
        TVxRealPos p;
        p.X = ExtractOneReal(s);
        p.Y = ExtractOneReal(s);
        Pos = p;
    } catch (const EConvertError&) {
    } catch (const EMathError&) {
    }
}

void TVxIniList::ReadXYVector(const QString& Section, TVxRealVector& XVector, TVxRealVector& YVector) const
{
    XVector.Clear();
    YVector.Clear();
    QStringList lines;
    ReadSectionValues(Section, lines);
    for (const QString& line : lines) {
        QString s = ValuePart(line);
        try {
            const double x = ExtractOneReal(s);
            const double y = ExtractOneReal(s);
            XVector.Add(x);
            YVector.Add(y);
        } catch (const EConvertError&) {
            // a line without two numbers is skipped, keeping the vectors paired
        } catch (const EMathError&) {
            // as is one with a number beyond the double range
        }
    }
}

// ---------------------------------------------------------------- fonts and styles

void TVxIniList::WriteFont(const QString& Section, const QString& Key, const TFont& Font)
{
    WriteString(Section, SubKey(Key, ".Name"), Font.Name());
    WriteInteger(Section, SubKey(Key, ".Charset"), Font.Charset());
    WriteInteger(Section, SubKey(Key, ".Color"), Font.Color());
    WriteInteger(Section, SubKey(Key, ".Size"), Font.Size());
    const TFontStyles style = Font.Style();
    WriteBool(Section, SubKey(Key, ".Bold"), style.Contains(fsBold));
    WriteBool(Section, SubKey(Key, ".Italic"), style.Contains(fsItalic));
    WriteBool(Section, SubKey(Key, ".Underline"), style.Contains(fsUnderline));
    WriteBool(Section, SubKey(Key, ".StrikeOut"), style.Contains(fsStrikeOut));
}

void TVxIniList::ReadFont(const QString& Section, const QString& Key, TFont& Font) const
{
    Font.SetName(ReadString(Section, SubKey(Key, ".Name"), Font.Name()));
    Font.SetCharset(ReadInteger(Section, SubKey(Key, ".Charset"), Font.Charset()));
    Font.SetColor(ReadInteger(Section, SubKey(Key, ".Color"), Font.Color()));
    Font.SetSize(ReadInteger(Section, SubKey(Key, ".Size"), Font.Size()));
    TFontStyles style = Font.Style();
    style.Set(fsBold, ReadBool(Section, SubKey(Key, ".Bold"), style.Contains(fsBold)));
    style.Set(fsItalic, ReadBool(Section, SubKey(Key, ".Italic"), style.Contains(fsItalic)));
    style.Set(fsUnderline, ReadBool(Section, SubKey(Key, ".Underline"), style.Contains(fsUnderline)));
    style.Set(fsStrikeOut, ReadBool(Section, SubKey(Key, ".StrikeOut"), style.Contains(fsStrikeOut)));
    Font.SetStyle(style);
}

void TVxIniList::WriteLine(const QString& Section, const QString& Key, const TVxLineStyle& LineStyle)
{
    WriteBool(Section, SubKey(Key, ".Visible"), LineStyle.Visible());
    WriteInteger(Section, SubKey(Key, ".Color"), LineStyle.Color());
    WriteInteger(Section, SubKey(Key, ".Style"), int(LineStyle.Style()));
    WriteInteger(Section, SubKey(Key, ".Width"), LineStyle.Width());
}

void TVxIniList::ReadLine(const QString& Section, const QString& Key, TVxLineStyle& LineStyle) const
{
    LineStyle.SetVisible(ReadBool(Section, SubKey(Key, ".Visible"), LineStyle.Visible()));
    LineStyle.SetColor(ReadInteger(Section, SubKey(Key, ".Color"), LineStyle.Color()));
    const int style = ReadInteger(Section, SubKey(Key, ".Style"), int(LineStyle.Style()));
    if (style >= psSolid && style <= psAlternate) // an unknown ordinal keeps the style
        LineStyle.SetStyle(TPenStyle(style));
    LineStyle.SetWidth(ReadInteger(Section, SubKey(Key, ".Width"), LineStyle.Width()));
}

void TVxIniList::WriteArea(const QString& Section, const QString& Key, const TVxAreaStyle& AreaStyle)
{
    WriteBool(Section, SubKey(Key, ".Visible"), AreaStyle.Visible());
    WriteInteger(Section, SubKey(Key, ".Color"), AreaStyle.Color());
    WriteInteger(Section, SubKey(Key, ".Style"), int(AreaStyle.Style()));
    WriteBool(Section, SubKey(Key, ".DrawXORed"), AreaStyle.DrawXOred());
}

void TVxIniList::ReadArea(const QString& Section, const QString& Key, TVxAreaStyle& AreaStyle) const
{
    AreaStyle.SetVisible(ReadBool(Section, SubKey(Key, ".Visible"), AreaStyle.Visible()));
    AreaStyle.SetColor(ReadInteger(Section, SubKey(Key, ".Color"), AreaStyle.Color()));
    const int style = ReadInteger(Section, SubKey(Key, ".Style"), int(AreaStyle.Style()));
    if (style >= bsSolid && style <= bsDiagCross)
        AreaStyle.SetStyle(TBrushStyle(style));
    AreaStyle.SetDrawXOred(ReadBool(Section, SubKey(Key, ".DrawXORed"), AreaStyle.DrawXOred()));
}

// ---------------------------------------------------------------- windows

void TVxIniList::WriteFormPrms(const QString& Section, const QString& Key, QWidget* Form)
{
    if (!Form)
        return;
    const int state = WindowStateOf(Form);
    // Qt keeps the normal placement of a minimised or maximised window, so it is read
    // from there instead of switching the window's state to and fro.
    QRect normal = Form->geometry();
    QPoint frameOffset = Form->geometry().topLeft() - Form->pos();
    if (state != wsNormal && Form->normalGeometry().isValid())
        normal = Form->normalGeometry();
    WriteInteger(Section, SubKey(Key, ".State"), state);
    WriteInteger(Section, SubKey(Key, ".Top"), normal.top() - frameOffset.y());
    WriteInteger(Section, SubKey(Key, ".Left"), normal.left() - frameOffset.x());
    WriteInteger(Section, SubKey(Key, ".Height"), normal.height());
    WriteInteger(Section, SubKey(Key, ".Width"), normal.width());
}

void TVxIniList::ReadFormPrms(const QString& Section, const QString& Key, QWidget* Form) const
{
    if (!Form)
        return;
    const int state = ReadInteger(Section, SubKey(Key, ".State"), WindowStateOf(Form));
    ApplyWindowState(Form, wsNormal);
    const int top = ReadInteger(Section, SubKey(Key, ".Top"), Form->y());
    const int left = ReadInteger(Section, SubKey(Key, ".Left"), Form->x());
    const int height = ReadInteger(Section, SubKey(Key, ".Height"), Form->height());
    const int width = ReadInteger(Section, SubKey(Key, ".Width"), Form->width());
    Form->move(left, top);
    Form->resize(width, height);
    KeepOnScreen(Form);
    ApplyWindowState(Form, state);
}

void TVxIniList::ReadFormPos(const QString& Section, const QString& Key, QWidget* Form) const
{
    if (!Form)
        return;
    const int top = ReadInteger(Section, SubKey(Key, ".Top"), Form->y());
    const int left = ReadInteger(Section, SubKey(Key, ".Left"), Form->x());
    Form->move(left, top);
    KeepOnScreen(Form);
}

// ---------------------------------------------------------------- component references

void TVxIniList::WriteComponentRef(const QString& Section, const QString& Key, const QObject* Component)
{
    QStringList parts;
    if (Component && !Component->objectName().isEmpty()) {
        const QObject* app = QCoreApplication::instance();
        for (const QObject* o = Component; o && o != app; o = o->parent())
            if (!o->objectName().isEmpty())
                parts.prepend(o->objectName());
    }
    WriteString(Section, Key, parts.join(QLatin1Char('.')));
}

void TVxIniList::ReadComponentRef(const QString& Section, const QString& Key, QObject*& Component) const
{
    Component = ResolveComponentRef(Section, Key, Component);
}

QObject* TVxIniList::ResolveComponentRef(const QString& Section, const QString& Key, QObject* Current) const
{
    const QString path = ReadString(Section, Key, QString());
    if (path.isEmpty())
        return Current;
    QObject* found = ResolveComponentPath(path);
    return found && found != Current ? found : Current;
}

// ---------------------------------------------------------------- file

TVxLargeIniFile::TVxLargeIniFile(const QString& Filename)
    : FFilename(Filename)
{
    if (Filename.isEmpty() || !QFile::exists(Filename))
        return;
    QFile file(Filename);
    if (!file.open(QIODevice::ReadOnly))
        throw EFOpenError(QStringLiteral("Cannot open file \"%1\". %2").arg(Filename, file.errorString()));
    const QByteArray data = file.readAll();
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8.decode(data);
    if (utf8.hasError())
        text = QString::fromLatin1(data);
    SetText(text);
}

TVxLargeIniFile::~TVxLargeIniFile()
{
    if (!Modified())
        return;
    try {
        Save();
    } catch (...) {
        // Destructors must not throw; Save() reports the same failure to callers who ask.
    }
}

void TVxLargeIniFile::Save()
{
    QStringList& lines = Lines();
    while (!lines.isEmpty() && lines.first().isEmpty())
        lines.removeFirst();

    QSaveFile file(FFilename);
    if (!file.open(QIODevice::WriteOnly))
        throw EFCreateError(QStringLiteral("Cannot create file \"%1\". %2").arg(FFilename, file.errorString()));
    const QByteArray data = Text().toUtf8();
    if (file.write(data) != data.size() || !file.commit())
        throw EInOutError(QStringLiteral("Cannot write file \"%1\". %2").arg(FFilename, file.errorString()));
    SetModified(false);
}

} // namespace vx
