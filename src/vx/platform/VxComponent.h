#pragma once
// The component model on QObject: component state flags, Loaded after a batch of
// settings, finding components by name and path, unique names.

#include <QList>
#include <QObject>
#include <QString>

namespace vx {

// Component state flags (combine with |).
using TComponentState = unsigned;
constexpr TComponentState csLoading = 1u << 0;
constexpr TComponentState csReading = 1u << 1;
constexpr TComponentState csWriting = 1u << 2;
constexpr TComponentState csDestroying = 1u << 3;
constexpr TComponentState csDesigning = 1u << 4;
constexpr TComponentState csUpdating = 1u << 6;

// The state of Obj: its own flags, plus csDesigning and csDestroying when an ancestor
// has them (owned components share their owner's design mode and destruction).
// Null gives 0.
TComponentState ComponentState(const QObject* Obj);
// Replaces Obj's own flags.
void SetComponentState(QObject* Obj, TComponentState State);
void IncludeComponentState(QObject* Obj, TComponentState Flags);
void ExcludeComponentState(QObject* Obj, TComponentState Flags);
inline bool IsDesigning(const QObject* Obj) { return (ComponentState(Obj) & csDesigning) != 0; }
inline bool IsLoading(const QObject* Obj) { return (ComponentState(Obj) & csLoading) != 0; }
inline bool IsDestroying(const QObject* Obj) { return (ComponentState(Obj) & csDestroying) != 0; }
// Marks Obj and all its descendants as being destroyed; call first thing in a component's
// destructor, so that its children (destroyed after it) see csDestroying and skip
// refreshing.
void Destroying(QObject* Obj);

// Components that react when a batch of properties or settings has been applied.
class IVxLoadable {
public:
    virtual ~IVxLoadable() = default;
    virtual void Loaded() = 0;
};

// Sets csLoading on Root and all its descendants.
void BeginLoading(QObject* Root);
// Clears csLoading on Root and its descendants, then calls Loaded on every one of them
// that is an IVxLoadable: Root first, then the descendants depth first in creation
// order. Components deleted by an earlier Loaded are skipped.
void EndLoading(QObject* Root);
// Calls Loaded on Obj if it is an IVxLoadable (after clearing its csLoading).
void CallLoaded(QObject* Obj);

// The direct children of Owner in creation order (the owner's components).
QObjectList Components(const QObject* Owner);
// The direct children of Owner that are of type T, in creation order.
template <class T>
QList<T*> ComponentsOf(const QObject* Owner)
{
    QList<T*> result;
    if (Owner)
        for (QObject* child : Owner->children())
            if (T* t = dynamic_cast<T*>(child))
                result.append(t);
    return result;
}
// The direct child of Owner named Name (case-insensitive), or null.
QObject* FindComponent(const QObject* Owner, const QString& Name);
// Resolves a dotted path "A.B.C": each name is looked up among the descendants of the
// previous object (nearest first). The path is first resolved inside Root's form (when
// Root is given); failing that, A names one of the application's roots (top-level
// widgets, objects parented to the application instance) and the rest is resolved
// inside it. Names are case-insensitive. Null if any step is missing or Path is empty.
QObject* FindComponentByPath(const QString& Path, const QObject* Root = nullptr);
// The path under which FindComponentByPath(Path, Root) finds Target: its name when it
// lives in Root's form, else "Form.Name". Empty for a null or unnamed Target.
QString ComponentPath(const QObject* Target, const QObject* Root = nullptr);

// The top-level ancestor of Obj (the form); Obj itself when it has no parent.
QObject* FormOf(const QObject* Obj);
// Prefix followed by the smallest number >= 1 such that no object in Owner's form
// (the form itself and all its descendants) has that name (case-insensitive).
QString FirstFreeName(const QObject* Owner, const QString& Prefix);

} // namespace vx
