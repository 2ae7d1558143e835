#pragma once

#include "app/camera.h"

#include <QCoreApplication>

class CmdClient;
class QLabel;
class QPushButton;
class QTextEdit;
class QTimer;

/// The live preview: a timer collects frames from the terminal's cameras, or readings of its
/// distance sensor, one after another. One source runs at a time; the button that started it stops
/// it, and the caption of that button decides which of the two a click does.
class LivePreview
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow) // the texts are in the context of the window

public:
    /// What the timer collects.
    enum Source { Palmprint, PalmVein, Joint, PalmHeight, SourceCount };

    struct Captions
    {
        QString idle;
        QString running;
    };

    /// The timer is a child of `window`, whose slot update_task() runs at each tick. Client and log
    /// are borrowed.
    LivePreview(CmdClient *client, QTextEdit *infoText, QObject *window);

    /// Takes the sources' buttons from the window, where their object names are their slots.
    void setButtons(const QWidget *window);
    QLabel *readoutLabel() const { return readout; }

    bool isRunning() const { return running; }
    /// Starts the source if its button reads the idle caption; otherwise stops the preview and
    /// restores that caption.
    void toggle(Source source);
    void toggle(Source source, const Captions &captions);
    void start(Source source, const QString &caption);
    /// Leaves the captions as they are.
    void stop();
    /// Enables all buttons, or the button of the running source only.
    void enableButtons() const;
    /// Collects and shows once. A failure stops the preview.
    void tick();

    void showPixel(const Camera &camera, QPoint position);

    Camera palmprint{"rgbImgLabel"};
    Camera palmVein{"irImgLabel"};

private:
    struct Collector
    {
        const char *buttonName;
        int interval; ///< ms from the end of one tick to the next
        const char *runningText;
        bool (LivePreview::*collect)();
        const char *failureText;
    };
    static const Collector collectors[SourceCount];

    bool collectPalmprint();
    bool collectPalmVein();
    bool collectJoint();
    bool collectPalmHeight();

    CmdClient *client;
    QTextEdit *log;
    QTimer *timer;
    QLabel *readout;
    QPushButton *buttons[SourceCount] = {};
    Captions captions[SourceCount];
    const Collector *running = nullptr;
};
