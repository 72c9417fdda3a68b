#pragma once
// The settings store: an INI-style text held as a list of lines, read and written by
// section and key, and the same list bound to a file.
//
// Layout: a section head "[Section]", value lines "Key=Value", and empty lines. A section
// runs from the line after its head to the next line that begins with "[" (or the end).
// Writers append a new section as an empty line, the head and the value line, and insert a
// new key at the end of its section, before the empty line that separates it from the next
// one. Section heads and keys match case-insensitively; a key matches only when "=" follows
// it directly. Reals are written with a point whatever the locale. Lookup is a linear scan
// from the head: the store is meant for settings of moderate size.

#include "vx/core/VxConsts.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

class QWidget;

namespace vx {

class TFont;
class TVxLineStyle;
class TVxAreaStyle;
class TVxCustomRealVector;
class TVxRealVector;

// An in-memory settings list. Readers return (or keep) their default for missing and
// malformed values, with the exceptions noted on each reader.
class TVxIniList {
public:
    TVxIniList() = default;
    virtual ~TVxIniList() = default;

    // The lines themselves.
    const QStringList& Lines() const { return FLines; }
    QStringList& Lines() { return FLines; }
    int Count() const { return int(FLines.size()); }
    // All lines joined by "\n" (with a trailing "\n" when not empty).
    QString Text() const;
    // Replaces the lines by those of Value (split at "\n", "\r\n" or "\r").
    void SetText(const QString& Value);
    void Clear() { FLines.clear(); }

    // Set by every write and erase.
    bool Modified() const { return FModified; }
    void SetModified(bool Value) { FModified = Value; }

    // Names of all section heads (lines beginning with "["), in list order.
    void ReadSections(QStringList& Strings) const;
    bool SectionExists(const QString& Section) const;
    // Names (text before "=") of the non-empty lines of the section.
    void ReadSection(const QString& Section, QStringList& Strings) const;
    // The non-empty lines of the section, whole.
    void ReadSectionValues(const QString& Section, QStringList& Strings) const;
    // Deletes the head and the lines up to the next head.
    void EraseSection(const QString& Section);

    // The text after "Key=" in the section, or Default. A head on the last line raises
    // EListError (list index out of bounds), as does WriteString for such a section.
    QString ReadString(const QString& Section, const QString& Key, const QString& Default) const;
    // Replaces the key's line, or inserts it at the end of the section, or appends the
    // section. The line is cut at a NUL character. The end of a section is found here by its
    // closing empty line (or the end of the list), as the writers lay sections out; in a
    // hand-made text without separator lines the scan runs on into the next section.
    void WriteString(const QString& Section, const QString& Key, const QString& Value);

    // The first integer / real in the value; Default when missing, empty or not a number
    // (never raises).
    int ReadInteger(const QString& Section, const QString& Key, int Default) const;
    double ReadReal(const QString& Section, const QString& Key, double Default) const;
    void WriteInteger(const QString& Section, const QString& Key, int Value);
    void WriteReal(const QString& Section, const QString& Key, double Value);
    // The real with at most Digits significant characters.
    void WriteRealDigits(const QString& Section, const QString& Key, double Value, int Digits);

    // "1" or "TRUE" (any case) is true, any other text false, missing or empty Default.
    bool ReadBool(const QString& Section, const QString& Key, bool Default) const;
    // Writes "1" or "0".
    void WriteBool(const QString& Section, const QString& Key, bool Value);

    // Values[0..High] joined by ";".
    void WriteRealArray(const QString& Section, const QString& Key, const TVxRealArray& Values, int High);
    // Fills Values[0..High] (growing the array when shorter) from a non-empty value; a
    // missing key leaves it unchanged. Too few numbers raise EConvertError.
    void ReadRealArray(const QString& Section, const QString& Key, TVxRealArray& Values, int High) const;
    void WriteIntArray(const QString& Section, const QString& Key, const TVxIntegerArray& Values);
    // Fills the whole array; as ReadRealArray.
    void ReadIntArray(const QString& Section, const QString& Key, TVxIntegerArray& Values) const;

    // All values of the vector joined by ";" (empty for an empty vector).
    void WriteRealVector(const QString& Section, const QString& Key, const TVxCustomRealVector& Vector);
    // Clears the vector (also for a missing key), then adds the numbers of the value one by
    // one; a malformed element ends the list.
    void ReadRealVector(const QString& Section, const QString& Key, TVxRealVector& Vector) const;

    // "X;Y".
    void WriteRealPos(const QString& Section, const QString& Key, const TVxRealPos& Pos);
    // X then Y from a non-empty value; a value without two valid numbers keeps Pos.
    void ReadRealPos(const QString& Section, const QString& Key, TVxRealPos& Pos) const;

    // Clears both vectors, then adds the first number of every non-empty line of the
    // section (the text after its "=") to XVector and the second to YVector.
    void ReadXYVector(const QString& Section, TVxRealVector& XVector, TVxRealVector& YVector) const;

    // Sub-keys Key.Name, .Charset, .Color, .Size, .Bold, .Italic, .Underline, .StrikeOut.
    void WriteFont(const QString& Section, const QString& Key, const TFont& Font);
    // Missing sub-keys leave the font's current values.
    void ReadFont(const QString& Section, const QString& Key, TFont& Font) const;
    // Sub-keys Key.Visible, .Color, .Style (pen style ordinal), .Width.
    void WriteLine(const QString& Section, const QString& Key, const TVxLineStyle& LineStyle);
    void ReadLine(const QString& Section, const QString& Key, TVxLineStyle& LineStyle) const;
    // Sub-keys Key.Visible, .Color, .Style (brush style ordinal), .DrawXORed.
    void WriteArea(const QString& Section, const QString& Key, const TVxAreaStyle& AreaStyle);
    void ReadArea(const QString& Section, const QString& Key, TVxAreaStyle& AreaStyle) const;

    // Window placement of a top-level widget: Key.State (0 normal, 1 minimised,
    // 2 maximised) and the normal placement Key.Top, .Left (frame position), .Height,
    // .Width (client size).
    void WriteFormPrms(const QString& Section, const QString& Key, QWidget* Form);
    // Applies the placement (current values as defaults); a placement off the screen is
    // replaced by the window centred on the screen; the state is applied last.
    void ReadFormPrms(const QString& Section, const QString& Key, QWidget* Form) const;
    // Key.Top and Key.Left only, with the same off-screen rule.
    void ReadFormPos(const QString& Section, const QString& Key, QWidget* Form) const;

    // The component's name path: owner names and its own name joined by "." (unnamed
    // owners are left out); empty for none or an unnamed component.
    void WriteComponentRef(const QString& Section, const QString& Key, const QObject* Component);
    // Resolves the stored path from the application's top-level objects down and replaces
    // Component when the lookup ends in a different component (a missing or unknown path
    // keeps the reference).
    void ReadComponentRef(const QString& Section, const QString& Key, QObject*& Component) const;
    // Typed forms: the reference is replaced only by a component of type T.
    template <class T>
    void ReadComponentRef(const QString& Section, const QString& Key, T*& Component) const
    {
        if (T* found = qobject_cast<T*>(ResolveComponentRef(Section, Key, Component)))
            Component = found;
    }
    template <class T>
    void ReadComponentRef(const QString& Section, const QString& Key, QPointer<T>& Component) const
    {
        T* c = Component.data();
        ReadComponentRef(Section, Key, c);
        Component = c;
    }

protected:
    // Index of the head line of Section, or -1.
    int FindSection(const QString& Section) const;
    // True when Line is the head line of a section.
    static bool IsHead(const QString& Line) { return Line.startsWith(QLatin1Char('[')); }
    // The line at I; raises EListError for an index outside the list.
    const QString& LineAt(int I) const;

private:
    // The component the stored path names when it differs from Current, else Current.
    QObject* ResolveComponentRef(const QString& Section, const QString& Key, QObject* Current) const;
    // The value of Key if the section holds it (Found), else nothing.
    QString FindValue(const QString& Section, const QString& Key, bool& Found) const;
    // The lines of the section (head excluded).
    void SectionRange(int Head, int& First, int& End) const;

    QStringList FLines;
    bool FModified = false;
};

// A settings list bound to a file: loaded when created (if the file exists), saved by
// Save() or, if anything was written, when destroyed. Saving drops the empty lines at the
// top and replaces the file atomically (a temporary file renamed over it), so a failed save
// never loses the previous file. The file is written as UTF-8 with "\n" line ends; reading
// accepts any line ends, skips a byte-order mark and takes a file that is not valid UTF-8
// as Latin-1 (older settings files).
class TVxLargeIniFile : public TVxIniList {
public:
    // Loads Filename when it exists; raises EFOpenError when it exists but cannot be read.
    explicit TVxLargeIniFile(const QString& Filename);
    TVxLargeIniFile(const TVxLargeIniFile&) = delete;
    TVxLargeIniFile& operator=(const TVxLargeIniFile&) = delete;
    // Saves when Modified, swallowing errors (a destructor must not throw); call Save()
    // first to see them.
    ~TVxLargeIniFile() override;

    QString Filename() const { return FFilename; }

    // Drops the leading empty lines and writes the list to the file; clears Modified.
    // Raises EFCreateError when the file cannot be created and EInOutError when writing
    // or replacing it fails.
    void Save();

private:
    QString FFilename;
};

} // namespace vx
