#pragma once

#include "plugin/CompositorPlugin.h"
#include "plugin/InteractorPlugin.h"
#include "plugin/RendererPlugin.h"
#include "support/Testing.h"
#include "value/Variant.h"
#include "view/Controller.h"
#include "view/Viewer.h"

namespace tesseralis::test {
/// What was called, in order, each with a blank behind it. Reading takes it.
class Log
{
public:
    void note(std::string const & text) { m_text += text + " "; }
    std::string take() { return std::exchange(m_text, {}); }

private:
    std::string m_text;
};

/// A plug-in without a module that notes each call as its name and an operation, and then does what it is told to.
template <class P>
class ViewDouble : public P
{
public:
    ViewDouble(std::string const & name, Log & log, bool enabled = true)
        : P(name, ObjectAttribute::Registered), m_log(log), m_name(name)
    {
        this->GetProperty("Enabled") = enabled;
    }
    ~ViewDouble() override { note("end"); }

    using P::initialize;
    using P::uninitialize;
    void initialize() override { m_isInitialized = true, note("initialize"); }
    void uninitialize() override { m_isInitialized = false, note("uninitialize"); }
    bool IsInitialized() const override { return m_isInitialized; }
    void idle() override { note("idle"); }
    void reshape(unsigned int x, unsigned int y) override
    {
        note("reshape" + std::to_string(x) + std::to_string(y));
        react(true);
    }
    bool button(Controller const & controller) override
    {
        note("button" + std::to_string(controller.GetActiveButton()));
        return seen = controller, react(false);
    }
    bool cursor(Controller const & controller) override
    {
        note("cursor" + std::to_string(controller.GetActiveCursor()));
        return seen = controller, react(false);
    }

    /// Called by reshape(), events and a compositor's display(), of which it gives the result. It may delete the
    /// double.
    std::function<bool()> reaction;
    Controller seen; // with the last event

protected:
    void note(std::string const & operation) { m_log.note(m_name + "." + operation); }
    bool react(bool fallback)
    {
        auto const copy = reaction;
        return copy ? copy() : fallback;
    }

private:
    Log & m_log;
    std::string m_name;
    bool m_isInitialized = false;
};

using RendererDouble = ViewDouble<RendererPlugin>;
using InteractorDouble = ViewDouble<InteractorPlugin>;

/// Displays nothing; notes what it is given.
class CompositorDouble : public ViewDouble<CompositorPlugin>
{
public:
    using ViewDouble::ViewDouble;

    void addDisplayable(Displayable * displayable) override { note("add:" + nameOf(displayable)); }
    void removeDisplayable(Displayable * displayable) override { note("remove:" + nameOf(displayable)); }
    bool display(std::list<Displayable *> const & displayables,
                 std::map<Displayable *, unsigned int> const & updates) override
    {
        std::string text = "display(";
        for (Displayable * const displayable : displayables) {
            auto const update = updates.find(displayable);
            text += nameOf(displayable) + (update == updates.end() ? "" : std::to_string(update->second)) + ",";
        }
        note(text + std::to_string(updates.size()) + ")");
        return react(true);
    }

private:
    static std::string nameOf(Displayable * displayable)
    {
        return dynamic_cast<Plugin &>(*displayable).GetObjectName();
    }
};

/// Notes what reaches the window; "(" and ")" are the context.
class ViewerDouble : public Viewer
{
public:
    explicit ViewerDouble(Log & log) : Viewer("viewer", ObjectAttribute::All), m_log(log) {}
    ~ViewerDouble() override { destroyViewer(); }

    void repaint() override { m_log.note("repaint"); }
    void bindContext() override { m_log.note("("), Viewer::bindContext(); }
    void releaseContext() override { Viewer::releaseContext(), m_log.note(")"); }
    void swapBuffers() override { m_log.note("swap"); }
    void requestCursorShape(CursorShape shape) override { m_log.note(shape == CursorShape::Hand ? "hand" : "shape"); }
    void restoreCursorShape() override { m_log.note("restore"); }

private:
    Log & m_log;
};
} // namespace tesseralis::test
