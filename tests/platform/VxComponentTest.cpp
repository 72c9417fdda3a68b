#include "vx/platform/VxComponent.h"

#include <QCoreApplication>
#include <QWidget>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

using namespace vx;

namespace {

// Records the order in which Loaded is called, and its own loading state at that time.
class LoadableObject : public QObject, public IVxLoadable {
public:
    LoadableObject(QObject* parent, const QString& name, std::vector<QString>* log)
        : QObject(parent), FLog(log)
    {
        setObjectName(name);
    }
    void Loaded() override
    {
        FLog->push_back(objectName());
        stillLoading = IsLoading(this);
    }
    bool stillLoading = true;

private:
    std::vector<QString>* FLog;
};

QObject* Named(QObject* parent, const QString& name)
{
    auto* o = new QObject(parent);
    o->setObjectName(name);
    return o;
}

} // namespace

TEST(VxComponent, StateFlagsAreOwnAndDesignOrDestroyIsInherited)
{
    QObject form;
    QObject* graph = Named(&form, "Graph1");
    QObject* axis = Named(graph, "XAxis1");
    EXPECT_EQ(ComponentState(axis), 0u);
    IncludeComponentState(&form, csDesigning | csLoading);
    EXPECT_TRUE(IsDesigning(axis));
    EXPECT_FALSE(IsLoading(axis)); // loading is not inherited
    IncludeComponentState(graph, csLoading);
    EXPECT_TRUE(IsLoading(graph));
    ExcludeComponentState(graph, csLoading);
    EXPECT_FALSE(IsLoading(graph));
    Destroying(graph);
    EXPECT_TRUE(IsDestroying(axis));
    EXPECT_FALSE(IsDestroying(&form));
    EXPECT_EQ(ComponentState(nullptr), 0u);
    SetComponentState(&form, 0);
    EXPECT_FALSE(IsDesigning(axis));
}

TEST(VxComponent, ChildrenOfADyingWidgetSeeTheFlag)
{
    // QWidget emits destroyed (which drops its own state) before deleting its children.
    struct Child : QObject {
        using QObject::QObject;
        bool* Seen;
        ~Child() override { *Seen = IsDestroying(this); }
    };
    struct Parent : QWidget {
        ~Parent() override { Destroying(this); }
    };
    bool seen = false;
    auto* parent = new Parent;
    auto* child = new Child(new QObject(parent));
    child->Seen = &seen;
    delete parent;
    EXPECT_TRUE(seen);
}

TEST(VxComponent, EndLoadingCallsLoadedRootFirstInCreationOrder)
{
    std::vector<QString> log;
    LoadableObject root(nullptr, "Form1", &log);
    auto* a = new LoadableObject(&root, "A", &log);
    new LoadableObject(a, "A1", &log);
    Named(&root, "Plain");
    auto* b = new LoadableObject(&root, "B", &log);
    BeginLoading(&root);
    EXPECT_TRUE(IsLoading(b));
    EndLoading(&root);
    EXPECT_EQ(log, (std::vector<QString>{"Form1", "A", "A1", "B"}));
    EXPECT_FALSE(b->stillLoading);
}

TEST(VxComponent, EndLoadingSkipsComponentsDeletedByAnEarlierLoaded)
{
    std::vector<QString> log;
    QObject root;
    struct Killer : LoadableObject {
        using LoadableObject::LoadableObject;
        QObject* victim = nullptr;
        void Loaded() override
        {
            LoadableObject::Loaded();
            delete victim;
        }
    };
    auto* killer = new Killer(&root, "K", &log);
    killer->victim = new LoadableObject(&root, "V", &log);
    EndLoading(&root);
    EXPECT_EQ(log, (std::vector<QString>{"K"}));
}

TEST(VxComponent, FindComponentIsCaseInsensitiveAmongDirectChildren)
{
    QObject form;
    QObject* graph = Named(&form, "Graph1");
    Named(graph, "XAxis1");
    EXPECT_EQ(FindComponent(&form, "graph1"), graph);
    EXPECT_EQ(FindComponent(&form, "XAxis1"), nullptr);
    EXPECT_EQ(FindComponent(&form, ""), nullptr);
    EXPECT_EQ(FindComponent(nullptr, "Graph1"), nullptr);
    EXPECT_EQ(Components(&form), QObjectList{graph});
}

TEST(VxComponent, FindComponentByPathInsideRootsFormAndFromApplicationRoots)
{
    auto form = std::make_unique<QWidget>();
    form->setObjectName("MainForm");
    QObject* graph = Named(form.get(), "Graph1");
    QObject* axis = Named(graph, "YAxis1");
    QObject* series = Named(form.get(), "Series1");
    QObject other;
    other.setObjectName("Other");
    QObject* otherChild = Named(&other, "Thing");

    EXPECT_EQ(FindComponentByPath("Series1", axis), series);
    EXPECT_EQ(FindComponentByPath("yaxis1", series), axis);
    EXPECT_EQ(FindComponentByPath("Graph1.YAxis1", series), axis);
    EXPECT_EQ(FindComponentByPath("MainForm.Series1"), series); // top-level widget
    EXPECT_EQ(FindComponentByPath("MainForm.Missing"), nullptr);
    EXPECT_EQ(FindComponentByPath(""), nullptr);
    EXPECT_EQ(FindComponentByPath("MainForm..Series1"), nullptr);
    EXPECT_EQ(FindComponentByPath("Thing", otherChild), otherChild);

    EXPECT_EQ(ComponentPath(series, axis), QStringLiteral("Series1"));
    EXPECT_EQ(ComponentPath(series, otherChild), QStringLiteral("MainForm.Series1"));
    EXPECT_EQ(FindComponentByPath(ComponentPath(series, otherChild), otherChild), series);
    EXPECT_EQ(ComponentPath(nullptr), QString());
}

TEST(VxComponent, ObjectsParentedToTheApplicationAreRoots)
{
    QObject* module = Named(QCoreApplication::instance(), "DataModule1");
    QObject* vector = Named(module, "Vector1");
    EXPECT_EQ(FindComponentByPath("DataModule1.Vector1"), vector);
    EXPECT_EQ(FormOf(vector), module);
    delete module;
}

TEST(VxComponent, FirstFreeNameSearchesTheWholeForm)
{
    QObject form;
    QObject* graph = Named(&form, "Graph1");
    Named(graph, "XAxis1");
    Named(graph, "xaxis2");
    Named(&form, "XAxis4");
    EXPECT_EQ(FirstFreeName(graph, "XAxis"), QStringLiteral("XAxis3"));
    EXPECT_EQ(FirstFreeName(&form, "Legend"), QStringLiteral("Legend1"));
    EXPECT_EQ(FormOf(graph), &form);
}

TEST(VxComponent, StateOfADeletedObjectDoesNotReachANewOneAtTheSameAddress)
{
    for (int i = 0; i < 100; ++i) {
        auto* first = new QObject;
        IncludeComponentState(first, csLoading | csDesigning);
        delete first;
        auto* second = new QObject; // often reuses the freed memory
        EXPECT_EQ(ComponentState(second), 0u);
        delete second;
    }
}
