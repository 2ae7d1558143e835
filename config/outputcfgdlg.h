#pragma once

#include "config/configdialog.h"

/// "Parameter Setting": the output configuration document with the terminal's work mode, its
/// servers, what it recognises and where it sends results.
class OutputCfgDlg : public ConfigDialog
{
    Q_OBJECT

public:
    OutputCfgDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

private slots:
    void showDataDesc(int mode);

private:
    static Document outputDocument();
    static ConfigBlock dataBlock();
    static ConfigBlock recognitionBlock();
    static ConfigBlock exportBlock();

    QGroupBox *createSystemGroup();
    QTextEdit *createDescription();
    void fitDescription();
    QGroupBox *createRecognitionGroup(const QString &title, int grid, QSize labelSize);
    QGroupBox *createExportGroup();

    QTextEdit *description;
};
