#include "plugin/Environment.h"
#include "plugin/RendererPlugin.h"
#include "support/Modules.h"
#include "value/Archive.h"
#include "value/Variant.h"

namespace {
class PluginArchive : public testing::Test
{
protected:
    PluginArchive()
    {
        registerObjectTypes();
        ArchiveElement(m_archive).store("tesseralis");
    }
    ~PluginArchive() override { Tesseralis::Get().clearObjects(); }

    ArchiveElement addElement(std::string const & type, std::string const & name, std::string const & container)
    {
        ArchiveElement element = ArchiveElement(m_archive).store(type);
        element.SetAttribute("name", name);
        element.SetAttribute("filename", moduleFile("sample_renderer"));
        element.SetAttribute("container", container);
        return element;
    }

    // Of each renderer in the registry, its name and that of its container.
    static std::string containers()
    {
        std::string text;
        for (Object * const object : Tesseralis::Get().GetObjects("renderer")) {
            PluginContainer const * const container = dynamic_cast<Plugin &>(*object).GetContainer();
            text += object->GetObjectName() + ":" + (container != nullptr ? container->GetObjectName() : "") + " ";
        }
        return text;
    }

    Archive m_archive;
};
} // namespace

TEST_F(PluginArchive, BringsBackAContainerWithItsPlugins)
{
    auto * const environment = new Environment("room", ObjectAttribute::All);
    auto * const plugin = new RendererPlugin("lamp", ObjectAttribute::All);
    plugin->SetFilename(moduleFile("sample_renderer"));
    plugin->SetCustomIcon("lamp.png");
    plugin->GetProperty("Enabled") = true;
    environment->add(plugin);

    Archive archive;
    archive.store();
    Tesseralis::Get().clearObjects();
    archive.retrieve(0);
    EXPECT_EQ(containers(), "lamp:room ");
    auto & read = dynamic_cast<RendererPlugin &>(*Tesseralis::Get().GetObject("lamp"));
    EXPECT_TRUE(read.IsInitialized());
    EXPECT_EQ(read.GetFilename(), moduleFile("sample_renderer"));
    EXPECT_EQ(read.GetCustomIcon(), "lamp.png");
    EXPECT_EQ(read.GetProperty("Enabled"), Variant(true));
}

TEST_F(PluginArchive, ReadsAPluginAfterItsContainer)
{
    ArchiveElement inner = addElement("renderer", "inner", "outer");
    ArchiveElement outer = addElement("renderer", "outer", "room");
    outer.store("property").SetAttribute("name", "room"); // isn't the container
    addElement("renderer", "", "");
    addElement("environment", "room", "");
    EXPECT_FALSE(RendererPlugin().IsRetrievable(inner));

    m_archive.retrieve(0);
    EXPECT_EQ(containers(), "inner:outer outer:room : ");
}

TEST_F(PluginArchive, EndsWhereContainersAreUnknownOrInARing)
{
    addElement("renderer", "a", "b");
    addElement("renderer", "b", "a");
    addElement("renderer", "own", "own");
    addElement("renderer", "lost", "nowhere");
    addElement("renderer", "wrong", "session");
    addElement("session", "session", "");
    m_archive.retrieve(0);
    EXPECT_TRUE(m_archive.IsEmpty());
    EXPECT_EQ(containers(), "a: b: own: lost: wrong: ");

    // A ring of objects that exist is stored and ends with the registry.
    auto & a = dynamic_cast<Plugin &>(*Tesseralis::Get().GetObject("a"));
    auto & b = dynamic_cast<Plugin &>(*Tesseralis::Get().GetObject("b"));
    a.add(&b);
    b.add(&a);
    m_archive.store();
    m_archive.retrieve(0);
    EXPECT_EQ(containers(), "a:b b:a own: lost: wrong: ");
    Tesseralis::Get().clearObjects();
    EXPECT_TRUE(Tesseralis::Get().GetObjects().empty());
}
