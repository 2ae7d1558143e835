#pragma once

#include "linkrig.h"

#include <QPushButton>

#include <memory>

using MakeWindow = std::unique_ptr<QWidget> (*)(Link *link);
Q_DECLARE_METATYPE(MakeWindow)

template <class Dialog> std::unique_ptr<QWidget> makeDialog(Link *link)
{
    return std::make_unique<Dialog>(&link->client, &link->log, nullptr);
}

/// A dialog on a connected client.
struct DialogRig : Link
{
    explicit DialogRig(MakeWindow make)
        : dialog(make(this))
    {
        dialog->show();
    }

    template <class Widget> Widget *find(const char *name) const
    {
        return dialog->findChild<Widget *>(QString::fromLatin1(name));
    }
    void click(const char *button) const { find<QPushButton>(button)->click(); }
    QStringList lines() const
    {
        return log.document()->isEmpty() ? QStringList() : log.toPlainText().split('\n');
    }

    std::unique_ptr<QWidget> dialog;
};
