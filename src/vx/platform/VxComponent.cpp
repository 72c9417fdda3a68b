#include "vx/platform/VxComponent.h"

#include <QApplication>
#include <QCoreApplication>
#include <QPointer>
#include <QHash>
#include <QSet>
#include <QWidget>

namespace vx {

namespace {

// Flags an object shares with its owner chain.
constexpr TComponentState InheritedFlags = csDesigning | csDestroying;

// Own state flags of the objects that have any; entries leave with their object. A
// table rather than dynamic properties: ComponentState is asked on every data change.
QHash<const QObject*, TComponentState>& StateTable()
{
    static QHash<const QObject*, TComponentState> table;
    return table;
}

TComponentState OwnState(const QObject* obj)
{
    const QHash<const QObject*, TComponentState>& table = StateTable();
    if (table.isEmpty())
        return 0;
    const auto it = table.constFind(obj);
    return it == table.constEnd() ? 0u : it.value();
}

// Root first, then every descendant depth first in creation order.
void CollectTree(QObject* obj, QList<QPointer<QObject>>& out)
{
    out.append(obj);
    for (QObject* child : obj->children())
        CollectTree(child, out);
}

QObject* FindChildNamed(const QObjectList& candidates, const QString& name)
{
    for (QObject* c : candidates)
        if (!c->objectName().isEmpty() && c->objectName().compare(name, Qt::CaseInsensitive) == 0)
            return c;
    return nullptr;
}

// The application's roots: top-level widgets, then objects parented to the application.
QObjectList GlobalRoots()
{
    QObjectList roots;
    if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        for (QWidget* w : QApplication::topLevelWidgets())
            roots.append(w);
    if (QCoreApplication* app = QCoreApplication::instance())
        for (QObject* o : app->children())
            if (!roots.contains(o))
                roots.append(o);
    return roots;
}

// Breadth first, so that the nearest object of that name wins.
QObject* FindDescendantNamed(const QObject* from, const QString& name)
{
    QObjectList level = from->children();
    while (!level.isEmpty()) {
        if (QObject* hit = FindChildNamed(level, name))
            return hit;
        QObjectList next;
        for (QObject* o : level)
            next += o->children();
        level = next;
    }
    return nullptr;
}

void CollectNames(const QObject* obj, QSet<QString>& names)
{
    if (!obj->objectName().isEmpty())
        names.insert(obj->objectName().toLower());
    for (const QObject* child : obj->children())
        CollectNames(child, names);
}

} // namespace

TComponentState ComponentState(const QObject* Obj)
{
    if (!Obj)
        return 0;
    TComponentState state = OwnState(Obj);
    for (const QObject* p = Obj->parent(); p; p = p->parent())
        state |= OwnState(p) & InheritedFlags;
    return state;
}

void SetComponentState(QObject* Obj, TComponentState State)
{
    if (!Obj)
        return;
    QHash<const QObject*, TComponentState>& table = StateTable();
    const auto it = table.find(Obj);
    if (it != table.end()) {
        it.value() = State; // a cleared entry stays until its object goes
        return;
    }
    if (State == 0)
        return;
    table.insert(Obj, State);
    QObject::connect(Obj, &QObject::destroyed, [Obj] { StateTable().remove(Obj); });
}

void IncludeComponentState(QObject* Obj, TComponentState Flags)
{
    if (Obj)
        SetComponentState(Obj, OwnState(Obj) | Flags);
}

void ExcludeComponentState(QObject* Obj, TComponentState Flags)
{
    if (Obj)
        SetComponentState(Obj, OwnState(Obj) & ~Flags);
}

void Destroying(QObject* Obj)
{
    // The flag goes on every descendant too: a dying object's own entry leaves the table
    // when it emits destroyed, which QWidget does before it deletes its children.
    if (!Obj || (OwnState(Obj) & csDestroying))
        return;
    IncludeComponentState(Obj, csDestroying);
    for (QObject* child : Obj->children())
        Destroying(child);
}

void BeginLoading(QObject* Root)
{
    if (!Root)
        return;
    QList<QPointer<QObject>> all;
    CollectTree(Root, all);
    for (const QPointer<QObject>& o : all)
        IncludeComponentState(o, csLoading);
}

void EndLoading(QObject* Root)
{
    if (!Root)
        return;
    QList<QPointer<QObject>> all;
    CollectTree(Root, all);
    for (const QPointer<QObject>& o : all)
        ExcludeComponentState(o, csLoading);
    for (const QPointer<QObject>& o : all)
        if (o)
            if (auto* loadable = dynamic_cast<IVxLoadable*>(o.data()))
                loadable->Loaded();
}

void CallLoaded(QObject* Obj)
{
    if (!Obj)
        return;
    ExcludeComponentState(Obj, csLoading);
    if (auto* loadable = dynamic_cast<IVxLoadable*>(Obj))
        loadable->Loaded();
}

QObjectList Components(const QObject* Owner)
{
    return Owner ? Owner->children() : QObjectList();
}

QObject* FindComponent(const QObject* Owner, const QString& Name)
{
    if (!Owner || Name.isEmpty())
        return nullptr;
    return FindChildNamed(Owner->children(), Name);
}

QObject* FindComponentByPath(const QString& Path, const QObject* Root)
{
    const QString path = Path.trimmed();
    const QStringList parts = path.split(QLatin1Char('.'));
    if (path.isEmpty() || parts.contains(QString()))
        return nullptr;
    auto walk = [&parts](const QObject* from, int first) -> QObject* {
        const QObject* cur = from;
        for (int i = first; cur && i < parts.size(); ++i)
            cur = FindDescendantNamed(cur, parts[i]);
        return const_cast<QObject*>(cur);
    };
    if (const QObject* form = FormOf(Root))
        if (QObject* found = walk(form, 0))
            return found;
    for (QObject* root : GlobalRoots())
        if (!root->objectName().isEmpty() && root->objectName().compare(parts[0], Qt::CaseInsensitive) == 0)
            if (QObject* found = walk(root, 1))
                return found;
    return nullptr;
}

QString ComponentPath(const QObject* Target, const QObject* Root)
{
    if (!Target || Target->objectName().isEmpty())
        return QString();
    const QObject* form = FormOf(Target);
    if ((Root && form == FormOf(Root)) || form == Target || form->objectName().isEmpty())
        return Target->objectName();
    return form->objectName() + QLatin1Char('.') + Target->objectName();
}

QObject* FormOf(const QObject* Obj)
{
    if (!Obj)
        return nullptr;
    const QObject* cur = Obj;
    while (cur->parent() && cur->parent() != QCoreApplication::instance())
        cur = cur->parent();
    return const_cast<QObject*>(cur);
}

QString FirstFreeName(const QObject* Owner, const QString& Prefix)
{
    QSet<QString> names;
    if (const QObject* form = FormOf(Owner))
        CollectNames(form, names);
    for (int n = 1;; ++n) {
        const QString candidate = Prefix + QString::number(n);
        if (!names.contains(candidate.toLower()))
            return candidate;
    }
}

} // namespace vx
