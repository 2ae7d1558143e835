#include "config/outputcfgdlg.h"

#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QTextEdit>

#include <iterator>
#include <utility>

namespace {

constexpr QSize DialogSize(730, 600);
constexpr QSize ButtonSize(100, 30);
constexpr int SystemHeight = 125;
constexpr QSize DescriptionSize(300, 85);
constexpr QSize ShortLabelSize(80, 25);
constexpr QSize LongLabelSize(105, 25);
constexpr QSize PortLabelSize(50, 25);
constexpr QSize ModuleLabelSize(100, 25);
constexpr QSize SystemControlSize(120, 25);
constexpr QSize PortSize(60, 25);
constexpr QSize ControlSize(140, 25);
constexpr QMargins Margins(11, 6, 11, 6);
constexpr QMargins GroupMargins(11, 5, 11, 5); // with these the columns fit the window
constexpr int RowSpacing = 6;
constexpr int ModuleSpacing = 15;
constexpr int DescriptionMargin = 2;
constexpr int MinFontSize = 8; // pixels

const char SystemMode[] = "sys mode";

enum Grid { System, Palm, Card, QrCode, Result, Rs485, Relay, Wiegand };

constexpr int MaxParagraphs = 3;

/// The description of each mode, one text per paragraph.
constexpr const char *ModeDescriptions[][MaxParagraphs] = {
    {QT_TRANSLATE_NOOP("OutputCfgDlg",
                       "In stand-alone mode, the system only allows user data and palm features to "
                       "be entered on the device side, and cannot pass background synchronization "
                       "features."),
     QT_TRANSLATE_NOOP(
         "OutputCfgDlg",
         "In this mode, features are allowed to be collected remotely and can be used "
         "as a palm entry device.")},
    {QT_TRANSLATE_NOOP(
        "OutputCfgDlg",
        "In this mode, user information, palm data, swipe card, and QR code data are "
        "obtained from the background and compared locally.")},
    {QT_TRANSLATE_NOOP(
        "OutputCfgDlg",
        "In this mode, the user information, swipe card and palm data are obtained "
        "from the background, and the QR code is verified and identified through the "
        "remote server.")},
    {QT_TRANSLATE_NOOP("OutputCfgDlg",
                       "In this mode, no user information is stored locally, it is only used as an "
                       "image acquisition device, and the image is verified and identified through "
                       "the background."),
     QT_TRANSLATE_NOOP("OutputCfgDlg",
                       "In this mode, swipe card and QR code work in pass-through mode."),
     QT_TRANSLATE_NOOP("OutputCfgDlg", "In this mode, the left server address is invalid.")},
    {QT_TRANSLATE_NOOP(
         "OutputCfgDlg",
         "In this mode, no user information is stored locally, and it is only used as "
         "a feature collection device, and the features are verified and identified "
         "through the background."),
     QT_TRANSLATE_NOOP("OutputCfgDlg",
                       "In this mode, swipe card and QR code work in pass-through mode."),
     QT_TRANSLATE_NOOP("OutputCfgDlg", "In this mode, the left server address is invalid.")},
    {QT_TRANSLATE_NOOP(
        "OutputCfgDlg",
        "In this mode, the device can be used as an recorder to read palm data, card "
        "number, QR code, etc.")},
};

} // namespace

OutputCfgDlg::OutputCfgDlg(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : ConfigDialog(outputDocument(), {dataBlock(), recognitionBlock(), exportBlock()}, cmdClient,
                   log, parent)
{
    setWindowTitle(tr("Parameter Setting"));
    setFixedSize(DialogSize);
    auto *column = new QVBoxLayout;
    column->addWidget(createRecognitionGroup(tr("Palm Recognition"), Palm, LongLabelSize));
    column->addWidget(createRecognitionGroup(tr("Card Recognition"), Card, LongLabelSize));
    column->addWidget(createRecognitionGroup(tr("QR Code Recognition"), QrCode, ShortLabelSize));
    auto *row = new QHBoxLayout;
    row->addLayout(column);
    row->addWidget(createExportGroup());

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Margins);
    layout->addStretch(1);
    layout->addWidget(createSystemGroup(), 1);
    layout->addStretch(1);
    layout->addLayout(row);
    layout->addStretch(3);
    layout->addLayout(createButtonRow(2, ButtonSize, ButtonSize));
    layout->addStretch(3);
    controls::keepEnterFromButtons(this);

    auto *modeCombo = findChild<QComboBox *>(QLatin1String(SystemMode));
    connect(modeCombo, SIGNAL(currentIndexChanged(int)), this, SLOT(showDataDesc(int)));
    showDataDesc(modeCombo->currentIndex());
}

ConfigDialog::Document OutputCfgDlg::outputDocument()
{
    Document document;
    document.get = &CmdClient::getOutputConfig;
    document.set = &CmdClient::setOutputConfig;
    document.fileName = QStringLiteral("/zt415_output.cfg");
    document.loaded = tr("Cfg file loaded：%1");
    document.notParsed = tr("json parsing failed.");
    document.issued = tr("Cfg data issued.");
    document.saved = tr("File save to %1");
    document.notSaved = tr("Fail to save the file：%1");
    document.notOpened = tr("Fail to open the file:%1");
    return document;
}

ConfigBlock OutputCfgDlg::dataBlock()
{
    using namespace control;
    return {
        "data block",
        {
            {SystemMode,
             {System, 0},
             tr("System Mode："),
             codedChoice({{tr("Stand-alone Mode"), 0},
                          {tr("Background Mode"), 1},
                          {tr("Gate&Visitor Mode"), 2},
                          {tr("Remote Image Mode"), 3},
                          {tr("Remote Feat. Mode"), 4},
                          {tr("Recorder Mode"), 10}}),
             tr("Wrong parameter of system mode.")},
            {"sys http version",
             {System, 1},
             tr("HTTP version："),
             choice({tr("V1.0 General"), tr("V1.1 Custom")}, {0, 9})},
            {"remote ip", {System, 2}, tr("Bkgd Addr："), address(Typing::ShortDigitsAndDots)},
            {"remote port", {System, 2, 1}, tr("Port："), number({1000, 65535, 18080}, {1, 65535})},
        }};
}

ConfigBlock OutputCfgDlg::recognitionBlock()
{
    using namespace control;
    const QStringList closeOpen{tr("close"), tr("open")};
    return {
        "recg info block",
        {
            {"palm recg mode",
             {Palm, 0},
             tr("recognit mode："),
             choice({tr("palm vein", "palmvein"), tr("palmprint"), tr("vein & print", "both")},
                    {0, 3}),
             tr("Wrong data of recognition mode.")},
            {"fake detect", {Palm, 1}, tr("prosthesis detect："), onOff(closeOpen)},
            {"max palm fail cnt",
             {Palm, 2},
             tr("max fail cnt："),
             number({3, 20, 15}, {1, 29}),
             tr("Wrong parameter of max recognition count.")},
            {"detect similar hand", {Palm, 3}, tr("similar recognit："), choice(closeOpen, {0, 1})},
            {"use card", {Card, 0}, tr("status："), onOff(closeOpen)},
            {"card forward type",
             {Card, 1},
             tr("pass-through："),
             choice({tr("RS485"), tr("Wiegand"), tr("RS485 & Wiegand")}, {0, 2}),
             tr("Wrong data of card pass-through mode.")},
            {"use qrcode", {QrCode, 0}, tr("status："), onOff(closeOpen)},
            {"qrcode server ip", {QrCode, 1}, tr("IP："), address(Typing::Anything)},
            {"qrcode server port", {QrCode, 2}, tr("port："), number({1000, 65535, 1000})},
            {"qrcode forward type",
             {QrCode, 3},
             tr("pass-through："),
             choice({tr("RS485"), tr("TCP/IP")}, {0, 1})},
        }};
}

ConfigBlock OutputCfgDlg::exportBlock()
{
    using namespace control;
    const QStringList closeOpen{tr("close"), tr("open")};
    return {
        "cfg output block",
        {
            {"record upload func", {Result, 0}, tr("status："), onOff(closeOpen)},
            {"record server ip", {Result, 1}, tr("IP："), address(Typing::Anything)},
            {"record server port", {Result, 2}, tr("port："), number({1000, 65536, 1000})},
            {"record server protocal",
             {Result, 3},
             tr("protocol："),
             onOff({tr("TCP"), tr("HTTP")})},
            {"rs485 output res func", {Rs485, 0}, tr("status："), onOff(closeOpen)},
            {"rs485 output type",
             {Rs485, 1},
             tr("content："),
             choice({tr("用户ID"), tr("卡号"), tr("用户名")}, {0, 2})},
            {"relay output func", {Relay, 0}, tr("status："), onOff(closeOpen)},
            {"wegen output func", {Wiegand, 0}, tr("status："), onOff(closeOpen)},
            {"weigen type", {Wiegand, 1}, tr("bit cnt："), choice({tr("34"), tr("26")}, {0, 1})},
            {"weigen content",
             {Wiegand, 2},
             tr("content："),
             choice({tr("user ID"), tr("card number")}, {0, 1})},
        }};
}

QGroupBox *OutputCfgDlg::createSystemGroup()
{
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    row->addLayout(createGrid(
        System, {{ShortLabelSize, SystemControlSize}, {PortLabelSize, PortSize}}, RowSpacing));
    row->addStretch(3);
    row->addWidget(createDescription(), 0, Qt::AlignVCenter);
    row->addStretch(1);

    QGroupBox *group = createLockedGroup(tr("System"));
    group->setFixedHeight(SystemHeight);
    group->setLayout(row);
    return group;
}

QTextEdit *OutputCfgDlg::createDescription()
{
    description = controls::field(new QTextEdit, "description", DescriptionSize);
    description->setReadOnly(true);
    description->setEnabled(false);
    description->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    description->document()->setDocumentMargin(DescriptionMargin);
    QPalette readable = description->palette();
    readable.setColor(QPalette::Disabled, QPalette::Text,
                      readable.color(QPalette::Active, QPalette::Text));
    description->setPalette(readable);
    return description;
}

QGroupBox *OutputCfgDlg::createRecognitionGroup(const QString &title, int grid, QSize labelSize)
{
    QGroupBox *group = createLockedGroup(title);
    QGridLayout *layout = createGrid(grid, {{labelSize, ControlSize}}, RowSpacing);
    layout->setContentsMargins(GroupMargins);
    layout->setColumnMinimumWidth(1, LongLabelSize.width()); // aligns the controls of all groups
    group->setLayout(layout);
    return group;
}

QGroupBox *OutputCfgDlg::createExportGroup()
{
    const std::pair<QString, Grid> modules[] = {{tr("Result output："), Result},
                                                {tr("RS485 output："), Rs485},
                                                {tr("Relay output："), Relay},
                                                {tr("Wiegand output："), Wiegand}};
    auto *layout = new QGridLayout;
    layout->setVerticalSpacing(ModuleSpacing);
    int row = 0;
    for (const auto &[title, grid] : modules) {
        layout->addWidget(controls::label(title, ModuleLabelSize), row, 0);
        layout->addLayout(createGrid(grid, {{ShortLabelSize, ControlSize}}, RowSpacing), row, 1);
        ++row;
    }
    QGroupBox *group = createLockedGroup(tr("Export Module"));
    group->setLayout(layout);
    return group;
}

void OutputCfgDlg::showDataDesc(int mode)
{
    description->clear();
    if (mode < 0 || mode >= static_cast<int>(std::size(ModeDescriptions)))
        return;
    QStringList paragraphs;
    for (const char *text : ModeDescriptions[mode]) {
        if (text)
            paragraphs.append(tr(text));
    }
    description->setPlainText(paragraphs.join(QLatin1Char('\n')));
    fitDescription();
}

/// Shrinks the font until the description fits, since a disabled text edit cannot be scrolled.
void OutputCfgDlg::fitDescription()
{
    const int frame = 2 * description->frameWidth();
    QTextDocument *page = description->document();
    page->setTextWidth(DescriptionSize.width() - frame);
    QFont letters = font();
    for (int size = QFontInfo(letters).pixelSize(); size >= MinFontSize; --size) {
        letters.setPixelSize(size);
        page->setDefaultFont(letters);
        if (page->size().height() <= DescriptionSize.height() - frame)
            break;
    }
}
