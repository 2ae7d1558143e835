<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AccessRecordDlg</name>
    <message>
        <source>Access Record Management</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Date:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Acquire Logs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Logs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Logs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load Logs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Logs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Index%1: (%2, %3, %4, %5, %6)</source>
        <extracomment>The placeholders keep their order.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Palm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Card</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data loaded：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>json parsing failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record loaded：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to save the data file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record data saved to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record deleted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record cleared.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AddUserDlg</name>
    <message>
        <source>Add User</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>user ID：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get Empty ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>usrname: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>card：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dept：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Empty user ID getting succeeded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User created.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User creating failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Username can&apos;t be empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The username is too long.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The department name is too long.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CmdClient</name>
    <message>
        <source>Device connected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connecting failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection is abandoned.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to send the data packet：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The data is too long for one packet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to accept ACK.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode set failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to set RTC time：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to set Debug address：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to set TOF correct value：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to reboot the system：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown error:%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The QR code database is full.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duplicate QR code data.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong parameter.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR code doesn&apos;t exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown error.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>参数错误</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The loaded data count：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is busy.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User ID doesn&apos;t exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The current user feature buffer is full.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device prompts failed：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to clear users：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is processing tasks, the deletion is failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User doesn&apos;t exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The user feature buffer is full.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The system is busy.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User ID exists.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The user database is full.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown error: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConfigDialog</name>
    <message>
        <source>Load</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File loaded：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>select fw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>*.cfg</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cfg file issued.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Device Name：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device Serial Number：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware Version：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vein Algorithm Version：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print Algorithm Version：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QrCode Algorithm Version：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System User Volume：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System Record Volume：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MAC Address：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User count：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UID:%1, username: %2, feature count:%3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quirel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not supported for now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ethernet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>IP:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refresh Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to connect the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device connected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection has been abandoned.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Listening</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Message Listening</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Local Address：%1.%2.%3.%4: %5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Palmprint Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Collecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Palmprint image acquisition failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Palm Vein Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Palm vein image acquisition failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Joint Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image acquisition failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get Palm Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stop collecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pix(X, Y): value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Palmprint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Palm Vein</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Video Control</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Palmprint PNG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Palm Vein PNG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Joint PNG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Palmprint RAW</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Palm Vein RAW</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Joint RAW</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TOF: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pt[%1, %2]: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Empty palmprint image, fail to save it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Empty palm vein image, fail to save it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>save palmprint RAW image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>save palm vein RAW image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>save joint RAW image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image saved: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text files (*.bin)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image saved：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to save the image.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enroll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Local Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remote Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device Config</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User Config</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System Config</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record Manage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reboot Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Factory Config</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QRCode Manage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get Work-Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System info acquiring succeeded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>JSON parsing failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to get mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current mode：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sure to reboot the system?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The system will restart after 10 seconds.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vendor secret key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>secret key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong secret key.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User Operation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add User</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enroll Palm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Verify Palm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Empty Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get User List</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove User</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Users</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Users</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Features</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remote Enroll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import Features</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right Hand</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left Hand</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data reading succeeded：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>palm vein preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enrollment failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The input instruction has been sent successfully. Please complete the input process according to the prompts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device has entered recognition mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to set mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Instruction sending succeeded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Instruction sending failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User cleared.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User ID：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User deleted successfully:%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User features deleted successfully:%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select feature file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>*.bin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to open the file:%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong format of feature file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feature file importing succeeded.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OutputCfgDlg</name>
    <message>
        <source>In stand-alone mode, the system only allows user data and palm features to be entered on the device side, and cannot pass background synchronization features.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In this mode, features are allowed to be collected remotely and can be used as a palm entry device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In this mode, user information, palm data, swipe card, and QR code data are obtained from the background and compared locally.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In this mode, the user information, swipe card and palm data are obtained from the background, and the QR code is verified and identified through the remote server.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In this mode, no user information is stored locally, it is only used as an image acquisition device, and the image is verified and identified through the background.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In this mode, swipe card and QR code work in pass-through mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In this mode, the left server address is invalid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In this mode, no user information is stored locally, and it is only used as a feature collection device, and the features are verified and identified through the background.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In this mode, the device can be used as an recorder to read palm data, card number, QR code, etc.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameter Setting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Palm Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Card Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR Code Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cfg file loaded：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>json parsing failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cfg data issued.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File save to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to save the file：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to open the file:%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System Mode：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stand-alone Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Background Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gate&amp;Visitor Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remote Image Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remote Feat. Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recorder Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong parameter of system mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>HTTP version：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>V1.0 General</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>V1.1 Custom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bkgd Addr：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>recognit mode：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>palm vein</source>
        <comment>palmvein</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>palmprint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>vein &amp; print</source>
        <comment>both</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong data of recognition mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>prosthesis detect：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>max fail cnt：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong parameter of max recognition count.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>similar recognit：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>status：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>pass-through：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RS485</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wiegand</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RS485 &amp; Wiegand</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong data of card pass-through mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>IP：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>port：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TCP/IP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>protocol：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TCP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>HTTP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>content：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>用户ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>卡号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>用户名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bit cnt：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>34</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>26</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>user ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>card number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Result output：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RS485 output：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Relay output：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wiegand output：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Module</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QRCodeDialog</name>
    <message>
        <source>QR Code Recognit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR Note：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR Data：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Time：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Abort Time：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add QR Code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load QR List</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rm QR by Note</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rm QR by Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear QR Code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR code added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Empty QR code remarks.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The QR code remarks are too long.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Empty QR code data.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The QR code data is too long.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is an error in the expiration date data.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>data loaded：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>json parsing failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR code record count：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>[%1][%2 %3]: %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR remark：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR info：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>del QR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR code deleted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>warn</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sure to clear QR code data?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR code data cleared.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RemoteEnrollDlg</name>
    <message>
        <source>Remote Features Enroll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>start enroll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>load data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remote enrollment has been started, please follow the instructions of the device to complete the enroll operation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>read the %1th image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to save the image.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware saved：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Features loaded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Features saved：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to save the features.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UserCfgDlg</name>
    <message>
        <source>User Config</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cfg file loaded：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>json parsing failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cfg data issued.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File saved to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to save file：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to open file:%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>recognit mode：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>palm vein</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>palmprint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>vein &amp; print</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>vein or print</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong authentication mode data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QR code：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>pass-through</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong QR code parameter data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dev addr：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>port：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>gateway：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bkgd Addr：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dev type：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>auto re：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>time：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>similar recognit：</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WatchServer</name>
    <message>
        <source>Recieve connect: [%1:%2]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data In:%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection is abandoned.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>setSysInfoDlg</name>
    <message>
        <source>System Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>serial number：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rnd generate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OTA file：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>select file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OTA upgrade</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong format of serial number.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial number set succeded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>select fw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not supported for now.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>vendorCfgDlg</name>
    <message>
        <source>Device Info</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cfg file loaded：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>json parsing failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cfg data issued</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File saved to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to save file：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to open file:%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>vendor：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dev rmk：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dev point：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dev type：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>volume：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wrong volume data.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dev addr：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>port：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>gateway：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>auto re：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>time：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rmt enrol：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Basic Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RTC：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>get RTC time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sync RTC time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TOF：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>get TOF corr</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>corr TOF bias</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>settings：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>export logs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System Operation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RTC time set succeeded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RTC time set failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fail to get RTC.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RTC time：%1-%2-%3 %4:%5:%6</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TOF corrected value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tof Bias：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TOF bias corrected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TOF bias correct failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TOF corrected value：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not supported for now.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
