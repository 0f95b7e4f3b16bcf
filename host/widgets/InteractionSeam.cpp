#include "InteractionSeam.h"

#include <QQueue>

namespace {
struct SeamState
{
    bool scripted = false;
    QQueue<QVariant> answers;
    QList<InteractionSeam::Shown> shown;
    std::function<void(QDialog*)> modalHook;
    std::function<void(const InteractionSeam::Shown&)> shownHook;
};
SeamState& state()
{
    static SeamState s;
    return s;
}
} // namespace

void InteractionSeam::setScripted(bool scripted)
{
    state().scripted = scripted;
}

bool InteractionSeam::isScripted()
{
    return state().scripted;
}

void InteractionSeam::pushAnswer(const QVariant& answer)
{
    state().answers.enqueue(answer);
}

QVariant InteractionSeam::takeAnswer(const QVariant& defaultAnswer)
{
    return state().answers.isEmpty() ? defaultAnswer : state().answers.dequeue();
}

void InteractionSeam::record(const Shown& shown)
{
    state().shown.append(shown);
    if (state().scripted && state().shownHook)
        state().shownHook(shown);
}

void InteractionSeam::setShownHook(std::function<void(const Shown&)> hook)
{
    state().shownHook = std::move(hook);
}

QList<InteractionSeam::Shown> InteractionSeam::shown()
{
    return state().shown;
}

InteractionSeam::Shown InteractionSeam::lastShown()
{
    return state().shown.isEmpty() ? Shown() : state().shown.last();
}

void InteractionSeam::clear()
{
    state().answers.clear();
    state().shown.clear();
    state().modalHook = nullptr;
    state().shownHook = nullptr;
}

void InteractionSeam::setModalHook(std::function<void(QDialog*)> hook)
{
    state().modalHook = std::move(hook);
}

void InteractionSeam::runModalHook(QDialog* dialog)
{
    if (state().modalHook)
        state().modalHook(dialog);
}
