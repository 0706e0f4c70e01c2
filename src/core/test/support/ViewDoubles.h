#pragma once

#include "plugin/CompositorPlugin.h"
#include "plugin/InteractorPlugin.h"
#include "plugin/RendererPlugin.h"
#include "value/Variant.h"
#include "view/Controller.h"
#include "view/Viewer.h"

#include <functional>
#include <string>
#include <utility>

namespace tesseralis::test {
/// What was called, in order and with a blank behind each.
struct Log
{
    void note(std::string const & text) { m_text += text + " "; }
    std::string take() { return std::exchange(m_text, {}); }

private:
    std::string m_text;
};

/// A plug-in without a module that notes each call as its name and an operation.
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
    void reshape(unsigned int width, unsigned int height) override
    {
        note("reshape" + std::to_string(width) + "x" + std::to_string(height));
    }
    bool button(Controller const & controller) override
    {
        return input("button" + std::to_string(controller.GetActiveButton()), controller);
    }
    bool cursor(Controller const & controller) override
    {
        return input("cursor" + std::to_string(controller.GetActiveCursor()), controller);
    }

    /// What it does with an event, in place of not handling it. It may delete the double.
    std::function<bool(Controller const &)> onInput;

protected:
    void note(std::string const & operation) { m_log.note(m_name + "." + operation); }

private:
    bool input(std::string const & operation, Controller const & controller)
    {
        note(operation);
        auto const reaction = onInput;
        return reaction ? reaction(controller) : false;
    }

    Log & m_log;
    std::string m_name;
    bool m_isInitialized = false;
};

template <class P>
class DisplayableDouble : public ViewDouble<P>
{
public:
    using ViewDouble<P>::ViewDouble;
    void display(Canvas &) override { this->note("display"); }
    void overlay(Canvas &) override { this->note("overlay"); }
};
using RendererDouble = DisplayableDouble<RendererPlugin>;
using InteractorDouble = DisplayableDouble<InteractorPlugin>;

/// Displays nothing; notes what it is given.
class CompositorDouble : public ViewDouble<CompositorPlugin>
{
public:
    using Displayables = std::list<Displayable *>;
    using Updates = std::map<Displayable *, unsigned int>;
    using ViewDouble::ViewDouble;

    void addDisplayable(Displayable * displayable) override { note("add:" + nameOf(displayable)); }
    void removeDisplayable(Displayable * displayable) override { note("remove:" + nameOf(displayable)); }
    bool display(Displayables const & displayables, Updates const & updates) override
    {
        std::string text = "display(";
        for (Displayable * const displayable : displayables) {
            auto const update = updates.find(displayable);
            text += nameOf(displayable) + (update == updates.end() ? "" : std::to_string(update->second)) + ",";
        }
        note(text + std::to_string(updates.size()) + ")");
        auto const reaction = onDisplay;
        return reaction ? reaction() : true;
    }

    /// Whether it is done with a frame.
    std::function<bool()> onDisplay;

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
    explicit ViewerDouble(Log & log, std::string const & name = "viewer")
        : Viewer(name, ObjectAttribute::All), m_log(log)
    {
    }
    ~ViewerDouble() override { destroyViewer(); }

    void repaint() override { m_log.note("repaint"); }
    void bindContext() override
    {
        m_log.note("(");
        Viewer::bindContext();
    }
    void releaseContext() override
    {
        Viewer::releaseContext();
        m_log.note(")");
    }
    void swapBuffers() override { m_log.note("swap"); }
    void requestCursorShape(CursorShape shape) override
    {
        m_log.note("shape" + std::to_string(static_cast<int>(shape)));
    }
    void restoreCursorShape() override { m_log.note("restore"); }

private:
    Log & m_log;
};
} // namespace tesseralis::test
