<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AboutAction</name>
    <message>
        <source>About %1</source>
        <translation>关于 %1</translation>
    </message>
    <message>
        <source>%1 %2
Console for a palm-recognition access terminal

Qt %3</source>
        <translation>%1 %2
掌纹掌静脉门禁设备控制台

Qt %3</translation>
    </message>
</context>
<context>
    <name>AccessRecordDlg</name>
    <message>
        <source>Access Record Management</source>
        <translation>通行记录管理</translation>
    </message>
    <message>
        <source>Date:</source>
        <translation>日期：</translation>
    </message>
    <message>
        <source>Acquire Logs</source>
        <translation>获取记录列表</translation>
    </message>
    <message>
        <source>Delete Logs</source>
        <translation>删除记录</translation>
    </message>
    <message>
        <source>Clear Logs</source>
        <translation>清空记录</translation>
    </message>
    <message>
        <source>Load Logs</source>
        <translation>读取记录</translation>
    </message>
    <message>
        <source>Export Logs</source>
        <translation>导出记录</translation>
    </message>
    <message>
        <source>Index%1: (%2, %3, %4, %5, %6)</source>
        <extracomment>The placeholders keep their order.</extracomment>
        <translation>序号%1：(%2, %3, %4, %5, %6)</translation>
    </message>
    <message>
        <source>Palm</source>
        <translation>刷掌</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>刷卡</translation>
    </message>
    <message>
        <source>Data loaded：%1</source>
        <translation>已读取数据：%1字节</translation>
    </message>
    <message>
        <source>json parsing failed.</source>
        <translation>JSON解析失败。</translation>
    </message>
    <message>
        <source>Record loaded：%1</source>
        <translation>已读取记录：%1条</translation>
    </message>
    <message>
        <source>Fail to save the data file.</source>
        <translation>数据文件保存失败。</translation>
    </message>
    <message>
        <source>Record data saved to %1</source>
        <translation>记录数据已保存到：%1</translation>
    </message>
    <message>
        <source>Record deleted.</source>
        <translation>记录已删除。</translation>
    </message>
    <message>
        <source>Record cleared.</source>
        <translation>记录已清空。</translation>
    </message>
    <message>
        <source>Access Record Management: %1 records</source>
        <translation>通行记录管理：%1 条记录</translation>
    </message>
</context>
<context>
    <name>AddUserDlg</name>
    <message>
        <source>Add User</source>
        <translation>添加用户</translation>
    </message>
    <message>
        <source>user ID：</source>
        <translation>用户ID：</translation>
    </message>
    <message>
        <source>Get Empty ID</source>
        <translation>获取空闲ID</translation>
    </message>
    <message>
        <source>usrname: </source>
        <translation>用户名：</translation>
    </message>
    <message>
        <source>card：</source>
        <translation>卡号：</translation>
    </message>
    <message>
        <source>dept：</source>
        <translation>部门：</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>创建</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Empty user ID getting succeeded.</source>
        <translation>空闲用户ID获取成功。</translation>
    </message>
    <message>
        <source>User created.</source>
        <translation>用户已创建。</translation>
    </message>
    <message>
        <source>User creating failed.</source>
        <translation>用户创建失败。</translation>
    </message>
    <message>
        <source>Username can&apos;t be empty.</source>
        <translation>用户名不能为空。</translation>
    </message>
    <message>
        <source>The username is too long.</source>
        <translation>用户名过长。</translation>
    </message>
    <message>
        <source>The department name is too long.</source>
        <translation>部门名称过长。</translation>
    </message>
</context>
<context>
    <name>CmdClient</name>
    <message>
        <source>Device connected.</source>
        <translation>设备已连接。</translation>
    </message>
    <message>
        <source>Connecting failed.</source>
        <translation>连接失败。</translation>
    </message>
    <message>
        <source>The connection is abandoned.</source>
        <translation>连接已断开。</translation>
    </message>
    <message>
        <source>Fail to send the data packet：%1</source>
        <translation>数据包发送失败：%1</translation>
    </message>
    <message>
        <source>The data is too long for one packet.</source>
        <translation>数据过长，超出单个数据包的容量。</translation>
    </message>
    <message>
        <source>Fail to accept ACK.</source>
        <translation>未收到设备应答。</translation>
    </message>
    <message>
        <source>Mode set failed: %1</source>
        <translation>模式设置失败：%1</translation>
    </message>
    <message>
        <source>Fail to set RTC time：%1</source>
        <translation>RTC时间设置失败：%1</translation>
    </message>
    <message>
        <source>Fail to set Debug address：%1</source>
        <translation>调试地址设置失败：%1</translation>
    </message>
    <message>
        <source>Fail to set TOF correct value：%1</source>
        <translation>TOF校正值设置失败：%1</translation>
    </message>
    <message>
        <source>Fail to reboot the system：%1</source>
        <translation>系统重启失败：%1</translation>
    </message>
    <message>
        <source>Unknown error:%1</source>
        <translation>未知错误：%1</translation>
    </message>
    <message>
        <source>The QR code database is full.</source>
        <translation>二维码数据库已满。</translation>
    </message>
    <message>
        <source>Duplicate QR code data.</source>
        <translation>二维码数据重复。</translation>
    </message>
    <message>
        <source>Wrong parameter.</source>
        <translation>参数错误。</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>未知错误。</translation>
    </message>
    <message>
        <source>QR code doesn&apos;t exist.</source>
        <translation>二维码不存在。</translation>
    </message>
    <message>
        <source>unknown error.</source>
        <translation>未知错误。</translation>
    </message>
    <message>
        <source>参数错误</source>
        <translation>参数错误</translation>
    </message>
    <message>
        <source>The loaded data count：%1</source>
        <translation>已读取数据量：%1字节</translation>
    </message>
    <message>
        <source>The device is busy.</source>
        <translation>设备正忙。</translation>
    </message>
    <message>
        <source>User ID doesn&apos;t exist.</source>
        <translation>用户ID不存在。</translation>
    </message>
    <message>
        <source>The current user feature buffer is full.</source>
        <translation>当前用户的特征缓冲区已满。</translation>
    </message>
    <message>
        <source>Device prompts failed：%1</source>
        <translation>设备返回错误：%1</translation>
    </message>
    <message>
        <source>Fail to clear users：%1</source>
        <translation>用户清空失败：%1</translation>
    </message>
    <message>
        <source>The device is processing tasks, the deletion is failed.</source>
        <translation>设备正在处理任务，删除失败。</translation>
    </message>
    <message>
        <source>User doesn&apos;t exist.</source>
        <translation>用户不存在。</translation>
    </message>
    <message>
        <source>The user feature buffer is full.</source>
        <translation>用户特征缓冲区已满。</translation>
    </message>
    <message>
        <source>The system is busy.</source>
        <translation>系统正忙。</translation>
    </message>
    <message>
        <source>User ID exists.</source>
        <translation>用户ID已存在。</translation>
    </message>
    <message>
        <source>The user database is full.</source>
        <translation>用户数据库已满。</translation>
    </message>
    <message>
        <source>Unknown error: %1</source>
        <translation>未知错误：%1</translation>
    </message>
</context>
<context>
    <name>ConfigDialog</name>
    <message>
        <source>Load</source>
        <translation>读取</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>File loaded：%1</source>
        <translation>已读取文件：%1字节</translation>
    </message>
    <message>
        <source>select fw</source>
        <translation>选择配置文件</translation>
    </message>
    <message>
        <source>*.cfg</source>
        <translation>*.cfg</translation>
    </message>
    <message>
        <source>Cfg file issued.</source>
        <translation>配置文件已下发。</translation>
    </message>
</context>
<context>
    <name>FindDialog</name>
    <message>
        <source>Match case</source>
        <translation>区分大小写</translation>
    </message>
    <message>
        <source>Find in %1</source>
        <translation>在“%1”中查找</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>查找内容</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>查找上一个</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>查找下一个</translation>
    </message>
    <message>
        <source>Not found.</source>
        <translation>未找到。</translation>
    </message>
</context>
<context>
    <name>LogView</name>
    <message>
        <source>Copy All</source>
        <translation>全部复制</translation>
    </message>
    <message>
        <source>Find…</source>
        <translation>查找…</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>另存为…</translation>
    </message>
    <message>
        <source>Save Log</source>
        <translation>保存日志</translation>
    </message>
    <message>
        <source>Text files (*.txt)</source>
        <translation>文本文件 (*.txt)</translation>
    </message>
    <message>
        <source>Fail to save the log：%1</source>
        <translation>日志保存失败：%1</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Device Name：%1</source>
        <translation>设备名称：%1</translation>
    </message>
    <message>
        <source>Device Serial Number：%1</source>
        <translation>设备序列号：%1</translation>
    </message>
    <message>
        <source>Firmware Version：%1</source>
        <translation>固件版本：%1</translation>
    </message>
    <message>
        <source>Vein Algorithm Version：%1</source>
        <translation>掌静脉算法版本：%1</translation>
    </message>
    <message>
        <source>Print Algorithm Version：%1</source>
        <translation>掌纹算法版本：%1</translation>
    </message>
    <message>
        <source>QrCode Algorithm Version：%1</source>
        <translation>二维码算法版本：%1</translation>
    </message>
    <message>
        <source>System User Volume：%1</source>
        <translation>系统用户容量：%1</translation>
    </message>
    <message>
        <source>System Record Volume：%1</source>
        <translation>系统记录容量：%1</translation>
    </message>
    <message>
        <source>MAC Address：%1</source>
        <translation>MAC地址：%1</translation>
    </message>
    <message>
        <source>User count：%1</source>
        <translation>用户数量：%1</translation>
    </message>
    <message>
        <source>UID:%1, username: %2, feature count:%3</source>
        <translation>用户ID：%1，用户名：%2，特征数量：%3</translation>
    </message>
    <message>
        <source>Quirel</source>
        <translation>Quirel</translation>
    </message>
    <message>
        <source>Hint</source>
        <translation>提示信息</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Not supported for now.</source>
        <translation>暂不支持此功能。</translation>
    </message>
    <message>
        <source>Device Connect</source>
        <translation>设备连接</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>断开连接</translation>
    </message>
    <message>
        <source>Ethernet</source>
        <translation>以太网</translation>
    </message>
    <message>
        <source>USB</source>
        <translation>USB</translation>
    </message>
    <message>
        <source>Serial Port</source>
        <translation>串口</translation>
    </message>
    <message>
        <source>Mode：</source>
        <translation>连接方式：</translation>
    </message>
    <message>
        <source>IP:</source>
        <translation>IP：</translation>
    </message>
    <message>
        <source>Port：</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>Refresh Connect</source>
        <translation>重新连接</translation>
    </message>
    <message>
        <source>Fail to connect the device.</source>
        <translation>设备连接失败。</translation>
    </message>
    <message>
        <source>Device connected.</source>
        <translation>设备已连接。</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>停止监听</translation>
    </message>
    <message>
        <source>The connection has been abandoned.</source>
        <translation>已断开与设备的连接。</translation>
    </message>
    <message>
        <source>Start Listening</source>
        <translation>开始监听</translation>
    </message>
    <message>
        <source>Message Listening</source>
        <translation>消息监听</translation>
    </message>
    <message>
        <source>Local Address：%1.%2.%3.%4: %5</source>
        <translation>本机地址：%1.%2.%3.%4:%5</translation>
    </message>
    <message>
        <source>Palmprint Preview</source>
        <translation>掌纹预览</translation>
    </message>
    <message>
        <source>Stop Collecting</source>
        <translation>停止采集</translation>
    </message>
    <message>
        <source>Palmprint image acquisition failed.</source>
        <translation>掌纹图像采集失败。</translation>
    </message>
    <message>
        <source>Palm Vein Preview</source>
        <translation>掌静脉预览</translation>
    </message>
    <message>
        <source>Palm vein image acquisition failed.</source>
        <translation>掌静脉图像采集失败。</translation>
    </message>
    <message>
        <source>Joint Preview</source>
        <translation>联合预览</translation>
    </message>
    <message>
        <source>Image acquisition failed.</source>
        <translation>图像采集失败。</translation>
    </message>
    <message>
        <source>Get Palm Height</source>
        <translation>获取手掌高度</translation>
    </message>
    <message>
        <source>stop collecting</source>
        <translation>结束采集</translation>
    </message>
    <message>
        <source>Pix(X, Y): value</source>
        <translation>坐标(X, Y)：灰度值</translation>
    </message>
    <message>
        <source>Palmprint</source>
        <translation>掌纹</translation>
    </message>
    <message>
        <source>Palm Vein</source>
        <translation>掌静脉</translation>
    </message>
    <message>
        <source>Video Control</source>
        <translation>视频控制</translation>
    </message>
    <message>
        <source>Save Palmprint PNG</source>
        <translation>保存掌纹PNG</translation>
    </message>
    <message>
        <source>Save Palm Vein PNG</source>
        <translation>保存掌静脉PNG</translation>
    </message>
    <message>
        <source>Save Joint PNG</source>
        <translation>保存联合PNG</translation>
    </message>
    <message>
        <source>Save Palmprint RAW</source>
        <translation>保存掌纹RAW</translation>
    </message>
    <message>
        <source>Save Palm Vein RAW</source>
        <translation>保存掌静脉RAW</translation>
    </message>
    <message>
        <source>Save Joint RAW</source>
        <translation>保存联合RAW</translation>
    </message>
    <message>
        <source>TOF: %1</source>
        <translation>TOF：%1</translation>
    </message>
    <message>
        <source>Pt[%1, %2]: %3</source>
        <translation>坐标(%1, %2)：%3</translation>
    </message>
    <message>
        <source>Empty palmprint image, fail to save it.</source>
        <translation>掌纹图像为空，保存失败。</translation>
    </message>
    <message>
        <source>Empty palm vein image, fail to save it.</source>
        <translation>掌静脉图像为空，保存失败。</translation>
    </message>
    <message>
        <source>save palmprint RAW image</source>
        <translation>保存掌纹RAW图像</translation>
    </message>
    <message>
        <source>save palm vein RAW image</source>
        <translation>保存掌静脉RAW图像</translation>
    </message>
    <message>
        <source>save joint RAW image</source>
        <translation>保存联合RAW图像</translation>
    </message>
    <message>
        <source>Image saved: %1</source>
        <translation>图像已保存：%1</translation>
    </message>
    <message>
        <source>Text files (*.bin)</source>
        <translation>RAW图像文件 (*.bin)</translation>
    </message>
    <message>
        <source>Image saved：%1</source>
        <translation>图像已保存：%1</translation>
    </message>
    <message>
        <source>Fail to save the image.</source>
        <translation>图像保存失败。</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>空闲</translation>
    </message>
    <message>
        <source>Enroll</source>
        <translation>录入</translation>
    </message>
    <message>
        <source>Local Recognition</source>
        <translation>本地识别</translation>
    </message>
    <message>
        <source>Remote Recognition</source>
        <translation>远程识别</translation>
    </message>
    <message>
        <source>other mode</source>
        <translation>其他模式</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Get Settings</source>
        <translation>获取系统信息</translation>
    </message>
    <message>
        <source>Device Config</source>
        <translation>设备配置</translation>
    </message>
    <message>
        <source>User Config</source>
        <translation>用户配置</translation>
    </message>
    <message>
        <source>System Config</source>
        <translation>系统配置</translation>
    </message>
    <message>
        <source>Record Manage</source>
        <translation>记录管理</translation>
    </message>
    <message>
        <source>Reboot Device</source>
        <translation>重启设备</translation>
    </message>
    <message>
        <source>Factory Config</source>
        <translation>工厂配置</translation>
    </message>
    <message>
        <source>QRCode Manage</source>
        <translation>二维码管理</translation>
    </message>
    <message>
        <source>Get Work-Mode</source>
        <translation>获取工作模式</translation>
    </message>
    <message>
        <source>System info acquiring succeeded.</source>
        <translation>系统信息获取成功。</translation>
    </message>
    <message>
        <source>JSON parsing failed.</source>
        <translation>JSON解析失败。</translation>
    </message>
    <message>
        <source>Fail to get mode.</source>
        <translation>工作模式获取失败。</translation>
    </message>
    <message>
        <source>Current mode：%1</source>
        <translation>当前工作模式：%1</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Sure to reboot the system?</source>
        <translation>确定要重启系统吗？</translation>
    </message>
    <message>
        <source>The system will restart after 10 seconds.</source>
        <translation>系统将在10秒后重启。</translation>
    </message>
    <message>
        <source>Vendor secret key</source>
        <translation>厂商密钥</translation>
    </message>
    <message>
        <source>secret key</source>
        <translation>密钥</translation>
    </message>
    <message>
        <source>Wrong secret key.</source>
        <translation>密钥错误。</translation>
    </message>
    <message>
        <source>User Operation</source>
        <translation>用户操作</translation>
    </message>
    <message>
        <source>Add User</source>
        <translation>添加用户</translation>
    </message>
    <message>
        <source>Enroll Palm</source>
        <translation>录入手掌</translation>
    </message>
    <message>
        <source>Verify Palm</source>
        <translation>验证手掌</translation>
    </message>
    <message>
        <source>Empty Mode</source>
        <translation>空闲模式</translation>
    </message>
    <message>
        <source>Get User List</source>
        <translation>获取用户列表</translation>
    </message>
    <message>
        <source>Remove User</source>
        <translation>删除用户</translation>
    </message>
    <message>
        <source>Clear Users</source>
        <translation>清空用户</translation>
    </message>
    <message>
        <source>Export Users</source>
        <translation>导出用户</translation>
    </message>
    <message>
        <source>Remove Features</source>
        <translation>删除特征</translation>
    </message>
    <message>
        <source>Remote Enroll</source>
        <translation>远程录入</translation>
    </message>
    <message>
        <source>Import Features</source>
        <translation>导入特征</translation>
    </message>
    <message>
        <source>Right Hand</source>
        <translation>右手</translation>
    </message>
    <message>
        <source>Left Hand</source>
        <translation>左手</translation>
    </message>
    <message>
        <source>Type: </source>
        <translation>类型：</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>模式：</translation>
    </message>
    <message>
        <source>Data reading succeeded：%1</source>
        <translation>数据读取成功：%1字节</translation>
    </message>
    <message>
        <source>palm vein preview</source>
        <translation>预览掌静脉</translation>
    </message>
    <message>
        <source>Enrollment failed.</source>
        <translation>录入失败。</translation>
    </message>
    <message>
        <source>The input instruction has been sent successfully. Please complete the input process according to the prompts.</source>
        <translation>录入指令已发送，请按提示完成录入。</translation>
    </message>
    <message>
        <source>The device has entered recognition mode.</source>
        <translation>设备已进入识别模式。</translation>
    </message>
    <message>
        <source>Fail to set mode.</source>
        <translation>模式设置失败。</translation>
    </message>
    <message>
        <source>Instruction sending succeeded.</source>
        <translation>指令发送成功。</translation>
    </message>
    <message>
        <source>Instruction sending failed.</source>
        <translation>指令发送失败。</translation>
    </message>
    <message>
        <source>User cleared.</source>
        <translation>用户已清空。</translation>
    </message>
    <message>
        <source>User ID</source>
        <translation>用户ID</translation>
    </message>
    <message>
        <source>User ID：</source>
        <translation>用户ID：</translation>
    </message>
    <message>
        <source>User deleted successfully:%1</source>
        <translation>用户已删除：%1</translation>
    </message>
    <message>
        <source>User features deleted successfully:%1</source>
        <translation>用户特征已删除：%1</translation>
    </message>
    <message>
        <source>Select feature file</source>
        <translation>选择特征文件</translation>
    </message>
    <message>
        <source>*.bin</source>
        <translation>*.bin</translation>
    </message>
    <message>
        <source>Fail to open the file:%1</source>
        <translation>文件打开失败：%1</translation>
    </message>
    <message>
        <source>Wrong format of feature file.</source>
        <translation>特征文件格式错误。</translation>
    </message>
    <message>
        <source>Feature file importing succeeded.</source>
        <translation>特征文件导入成功。</translation>
    </message>
    <message>
        <source>not connected</source>
        <translation>未连接</translation>
    </message>
    <message>
        <source>looking up the address</source>
        <translation>正在解析地址</translation>
    </message>
    <message>
        <source>connecting</source>
        <translation>正在连接</translation>
    </message>
    <message>
        <source>connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>bound to an address</source>
        <translation>已绑定地址</translation>
    </message>
    <message>
        <source>listening</source>
        <translation>正在监听</translation>
    </message>
    <message>
        <source>closing</source>
        <translation>正在关闭</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>暂无</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>Socket: %1
Last reply: %2</source>
        <translation>套接字：%1
上次应答：%2</translation>
    </message>
    <message>
        <source>%1 × %2 pixels
%3 frames/s
%4 MB/s</source>
        <translation>%1 × %2 像素
%3 帧/秒
%4 MB/s</translation>
    </message>
</context>
<context>
    <name>OutputCfgDlg</name>
    <message>
        <source>In stand-alone mode, the system only allows user data and palm features to be entered on the device side, and cannot pass background synchronization features.</source>
        <translation>单机模式下，系统仅允许在设备端录入用户数据和手掌特征，不能通过后台同步特征。</translation>
    </message>
    <message>
        <source>In this mode, features are allowed to be collected remotely and can be used as a palm entry device.</source>
        <translation>此模式下允许远程采集特征，设备可用作手掌录入设备。</translation>
    </message>
    <message>
        <source>In this mode, user information, palm data, swipe card, and QR code data are obtained from the background and compared locally.</source>
        <translation>此模式下，用户信息、手掌数据、卡数据和二维码数据均从后台获取，并在本地比对。</translation>
    </message>
    <message>
        <source>In this mode, the user information, swipe card and palm data are obtained from the background, and the QR code is verified and identified through the remote server.</source>
        <translation>此模式下，用户信息、卡数据和手掌数据从后台获取，二维码由远程服务器验证识别。</translation>
    </message>
    <message>
        <source>In this mode, no user information is stored locally, it is only used as an image acquisition device, and the image is verified and identified through the background.</source>
        <translation>此模式下，本地不存储用户信息，设备仅用于采集图像，图像由后台验证识别。</translation>
    </message>
    <message>
        <source>In this mode, swipe card and QR code work in pass-through mode.</source>
        <translation>此模式下，刷卡和二维码均以透传方式工作。</translation>
    </message>
    <message>
        <source>In this mode, the left server address is invalid.</source>
        <translation>此模式下，左侧的后台地址无效。</translation>
    </message>
    <message>
        <source>In this mode, no user information is stored locally, and it is only used as a feature collection device, and the features are verified and identified through the background.</source>
        <translation>此模式下，本地不存储用户信息，设备仅用于采集特征，特征由后台验证识别。</translation>
    </message>
    <message>
        <source>In this mode, the device can be used as an recorder to read palm data, card number, QR code, etc.</source>
        <translation>此模式下，设备可用作采集器，读取手掌数据、卡号、二维码等。</translation>
    </message>
    <message>
        <source>Parameter Setting</source>
        <translation>参数设置</translation>
    </message>
    <message>
        <source>Palm Recognition</source>
        <translation>手掌识别</translation>
    </message>
    <message>
        <source>Card Recognition</source>
        <translation>刷卡识别</translation>
    </message>
    <message>
        <source>QR Code Recognition</source>
        <translation>二维码识别</translation>
    </message>
    <message>
        <source>Cfg file loaded：%1</source>
        <translation>已读取配置文件：%1字节</translation>
    </message>
    <message>
        <source>json parsing failed.</source>
        <translation>JSON解析失败。</translation>
    </message>
    <message>
        <source>Cfg data issued.</source>
        <translation>配置数据已下发。</translation>
    </message>
    <message>
        <source>File save to %1</source>
        <translation>文件已保存到：%1</translation>
    </message>
    <message>
        <source>Fail to save the file：%1</source>
        <translation>文件保存失败：%1</translation>
    </message>
    <message>
        <source>Fail to open the file:%1</source>
        <translation>文件打开失败：%1</translation>
    </message>
    <message>
        <source>System Mode：</source>
        <translation>系统模式：</translation>
    </message>
    <message>
        <source>Stand-alone Mode</source>
        <translation>单机模式</translation>
    </message>
    <message>
        <source>Background Mode</source>
        <translation>后台模式</translation>
    </message>
    <message>
        <source>Gate&amp;Visitor Mode</source>
        <translation>闸机访客模式</translation>
    </message>
    <message>
        <source>Remote Image Mode</source>
        <translation>远程图像模式</translation>
    </message>
    <message>
        <source>Remote Feat. Mode</source>
        <translation>远程特征模式</translation>
    </message>
    <message>
        <source>Recorder Mode</source>
        <translation>采集器模式</translation>
    </message>
    <message>
        <source>Wrong parameter of system mode.</source>
        <translation>系统模式参数错误。</translation>
    </message>
    <message>
        <source>HTTP version：</source>
        <translation>HTTP版本：</translation>
    </message>
    <message>
        <source>V1.0 General</source>
        <translation>V1.0 通用</translation>
    </message>
    <message>
        <source>V1.1 Custom</source>
        <translation>V1.1 定制</translation>
    </message>
    <message>
        <source>Bkgd Addr：</source>
        <translation>后台地址：</translation>
    </message>
    <message>
        <source>Port：</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>open</source>
        <translation>开启</translation>
    </message>
    <message>
        <source>recognit mode：</source>
        <translation>识别模式：</translation>
    </message>
    <message>
        <source>palm vein</source>
        <comment>palmvein</comment>
        <translation>掌静脉</translation>
    </message>
    <message>
        <source>palmprint</source>
        <translation>掌纹</translation>
    </message>
    <message>
        <source>vein &amp; print</source>
        <comment>both</comment>
        <translation>掌静脉+掌纹</translation>
    </message>
    <message>
        <source>Wrong data of recognition mode.</source>
        <translation>识别模式数据错误。</translation>
    </message>
    <message>
        <source>prosthesis detect：</source>
        <translation>假体检测：</translation>
    </message>
    <message>
        <source>max fail cnt：</source>
        <translation>最大失败次数：</translation>
    </message>
    <message>
        <source>Wrong parameter of max recognition count.</source>
        <translation>最大失败次数参数错误。</translation>
    </message>
    <message>
        <source>similar recognit：</source>
        <translation>相似手掌识别：</translation>
    </message>
    <message>
        <source>status：</source>
        <translation>状态：</translation>
    </message>
    <message>
        <source>pass-through：</source>
        <translation>透传方式：</translation>
    </message>
    <message>
        <source>RS485</source>
        <translation>RS485</translation>
    </message>
    <message>
        <source>Wiegand</source>
        <translation>韦根</translation>
    </message>
    <message>
        <source>RS485 &amp; Wiegand</source>
        <translation>RS485+韦根</translation>
    </message>
    <message>
        <source>Wrong data of card pass-through mode.</source>
        <translation>刷卡透传方式数据错误。</translation>
    </message>
    <message>
        <source>IP：</source>
        <translation>IP：</translation>
    </message>
    <message>
        <source>port：</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>TCP/IP</source>
        <translation>TCP/IP</translation>
    </message>
    <message>
        <source>protocol：</source>
        <translation>协议：</translation>
    </message>
    <message>
        <source>TCP</source>
        <translation>TCP</translation>
    </message>
    <message>
        <source>HTTP</source>
        <translation>HTTP</translation>
    </message>
    <message>
        <source>content：</source>
        <translation>内容：</translation>
    </message>
    <message>
        <source>用户ID</source>
        <translation>用户ID</translation>
    </message>
    <message>
        <source>卡号</source>
        <translation>卡号</translation>
    </message>
    <message>
        <source>用户名</source>
        <translation>用户名</translation>
    </message>
    <message>
        <source>bit cnt：</source>
        <translation>位数：</translation>
    </message>
    <message>
        <source>34</source>
        <translation>34</translation>
    </message>
    <message>
        <source>26</source>
        <translation>26</translation>
    </message>
    <message>
        <source>user ID</source>
        <translation>用户ID</translation>
    </message>
    <message>
        <source>card number</source>
        <translation>卡号</translation>
    </message>
    <message>
        <source>System</source>
        <translation>系统</translation>
    </message>
    <message>
        <source>Result output：</source>
        <translation>结果输出：</translation>
    </message>
    <message>
        <source>RS485 output：</source>
        <translation>RS485输出：</translation>
    </message>
    <message>
        <source>Relay output：</source>
        <translation>继电器输出：</translation>
    </message>
    <message>
        <source>Wiegand output：</source>
        <translation>韦根输出：</translation>
    </message>
    <message>
        <source>Export Module</source>
        <translation>输出模块</translation>
    </message>
</context>
<context>
    <name>QRCodeDialog</name>
    <message>
        <source>QR Code Recognit</source>
        <translation>二维码管理</translation>
    </message>
    <message>
        <source>QR Note：</source>
        <translation>二维码备注：</translation>
    </message>
    <message>
        <source>QR Data：</source>
        <translation>二维码数据：</translation>
    </message>
    <message>
        <source>Start Time：</source>
        <translation>开始时间：</translation>
    </message>
    <message>
        <source>Abort Time：</source>
        <translation>结束时间：</translation>
    </message>
    <message>
        <source>Add QR Code</source>
        <translation>添加二维码</translation>
    </message>
    <message>
        <source>Load QR List</source>
        <translation>读取二维码列表</translation>
    </message>
    <message>
        <source>Rm QR by Note</source>
        <translation>按备注删除</translation>
    </message>
    <message>
        <source>Rm QR by Data</source>
        <translation>按数据删除</translation>
    </message>
    <message>
        <source>Clear QR Code</source>
        <translation>清空二维码</translation>
    </message>
    <message>
        <source>QR code added.</source>
        <translation>二维码已添加。</translation>
    </message>
    <message>
        <source>Empty QR code remarks.</source>
        <translation>二维码备注为空。</translation>
    </message>
    <message>
        <source>The QR code remarks are too long.</source>
        <translation>二维码备注过长。</translation>
    </message>
    <message>
        <source>Empty QR code data.</source>
        <translation>二维码数据为空。</translation>
    </message>
    <message>
        <source>The QR code data is too long.</source>
        <translation>二维码数据过长。</translation>
    </message>
    <message>
        <source>There is an error in the expiration date data.</source>
        <translation>有效期数据错误。</translation>
    </message>
    <message>
        <source>data loaded：%1</source>
        <translation>已读取数据：%1字节</translation>
    </message>
    <message>
        <source>json parsing failed.</source>
        <translation>JSON解析失败。</translation>
    </message>
    <message>
        <source>QR code record count：%1</source>
        <translation>二维码记录数量：%1</translation>
    </message>
    <message>
        <source>[%1][%2 %3]: %4</source>
        <translation>[%1][%2 %3]：%4</translation>
    </message>
    <message>
        <source>QR remark：</source>
        <translation>二维码备注：</translation>
    </message>
    <message>
        <source>QR info：</source>
        <translation>二维码数据：</translation>
    </message>
    <message>
        <source>del QR</source>
        <translation>删除二维码</translation>
    </message>
    <message>
        <source>QR code deleted.</source>
        <translation>二维码已删除。</translation>
    </message>
    <message>
        <source>warn</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>sure to clear QR code data?</source>
        <translation>确定要清空二维码数据吗？</translation>
    </message>
    <message>
        <source>QR code data cleared.</source>
        <translation>二维码数据已清空。</translation>
    </message>
</context>
<context>
    <name>RemoteEnrollDlg</name>
    <message>
        <source>Remote Features Enroll</source>
        <translation>远程录入特征</translation>
    </message>
    <message>
        <source>start enroll</source>
        <translation>开始录入</translation>
    </message>
    <message>
        <source>load data</source>
        <translation>读取数据</translation>
    </message>
    <message>
        <source>Remote enrollment has been started, please follow the instructions of the device to complete the enroll operation</source>
        <translation>远程录入已开始，请按设备提示完成录入操作</translation>
    </message>
    <message>
        <source>read the %1th image</source>
        <translation>已读取第%1张图像</translation>
    </message>
    <message>
        <source>Fail to save the image.</source>
        <translation>图像保存失败。</translation>
    </message>
    <message>
        <source>Firmware saved：%1</source>
        <translation>图像已保存：%1</translation>
    </message>
    <message>
        <source>Features loaded.</source>
        <translation>特征已读取。</translation>
    </message>
    <message>
        <source>Features saved：%1</source>
        <translation>特征已保存：%1</translation>
    </message>
    <message>
        <source>Fail to save the features.</source>
        <translation>特征保存失败。</translation>
    </message>
</context>
<context>
    <name>UserCfgDlg</name>
    <message>
        <source>User Config</source>
        <translation>用户配置</translation>
    </message>
    <message>
        <source>Recognition</source>
        <translation>识别</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>网络</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Cfg file loaded：%1</source>
        <translation>已读取配置文件：%1字节</translation>
    </message>
    <message>
        <source>json parsing failed</source>
        <translation>JSON解析失败</translation>
    </message>
    <message>
        <source>Cfg data issued.</source>
        <translation>配置数据已下发。</translation>
    </message>
    <message>
        <source>File saved to %1</source>
        <translation>文件已保存到：%1</translation>
    </message>
    <message>
        <source>Fail to save file：%1</source>
        <translation>文件保存失败：%1</translation>
    </message>
    <message>
        <source>Fail to open file:%1</source>
        <translation>文件打开失败：%1</translation>
    </message>
    <message>
        <source>close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>open</source>
        <translation>开启</translation>
    </message>
    <message>
        <source>recognit mode：</source>
        <translation>识别模式：</translation>
    </message>
    <message>
        <source>palm vein</source>
        <translation>掌静脉</translation>
    </message>
    <message>
        <source>palmprint</source>
        <translation>掌纹</translation>
    </message>
    <message>
        <source>vein &amp; print</source>
        <translation>掌静脉+掌纹</translation>
    </message>
    <message>
        <source>vein or print</source>
        <translation>掌静脉或掌纹</translation>
    </message>
    <message>
        <source>Wrong authentication mode data</source>
        <translation>识别模式数据错误</translation>
    </message>
    <message>
        <source>QR code：</source>
        <translation>二维码：</translation>
    </message>
    <message>
        <source>pass-through</source>
        <translation>透传</translation>
    </message>
    <message>
        <source>Wrong QR code parameter data</source>
        <translation>二维码参数数据错误</translation>
    </message>
    <message>
        <source>dev addr：</source>
        <translation>设备地址：</translation>
    </message>
    <message>
        <source>port：</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>gateway：</source>
        <translation>网关：</translation>
    </message>
    <message>
        <source>Bkgd Addr：</source>
        <translation>后台地址：</translation>
    </message>
    <message>
        <source>dev type：</source>
        <translation>设备类型：</translation>
    </message>
    <message>
        <source>in</source>
        <translation>入口</translation>
    </message>
    <message>
        <source>out</source>
        <translation>出口</translation>
    </message>
    <message>
        <source>auto re：</source>
        <translation>自动重启：</translation>
    </message>
    <message>
        <source>time：</source>
        <translation>时间：</translation>
    </message>
    <message>
        <source>similar recognit：</source>
        <translation>相似手掌识别：</translation>
    </message>
</context>
<context>
    <name>WatchServer</name>
    <message>
        <source>Recieve connect: [%1:%2]</source>
        <translation>收到连接：[%1:%2]</translation>
    </message>
    <message>
        <source>Data In:%1</source>
        <translation>收到数据：%1</translation>
    </message>
    <message>
        <source>The connection is abandoned.</source>
        <translation>连接已断开。</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Console for a palm-recognition access terminal</source>
        <translation>掌纹掌静脉门禁设备控制台</translation>
    </message>
</context>
<context>
    <name>setSysInfoDlg</name>
    <message>
        <source>System Settings</source>
        <translation>系统设置</translation>
    </message>
    <message>
        <source>serial number：</source>
        <translation>序列号：</translation>
    </message>
    <message>
        <source>Rnd generate</source>
        <translation>随机生成</translation>
    </message>
    <message>
        <source>set</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>OTA file：</source>
        <translation>固件：</translation>
    </message>
    <message>
        <source>select file</source>
        <translation>选择文件</translation>
    </message>
    <message>
        <source>OTA upgrade</source>
        <translation>OTA升级</translation>
    </message>
    <message>
        <source>Wrong format of serial number.</source>
        <translation>序列号格式错误。</translation>
    </message>
    <message>
        <source>Serial number set succeded.</source>
        <translation>序列号设置成功。</translation>
    </message>
    <message>
        <source>select fw</source>
        <translation>选择固件文件</translation>
    </message>
    <message>
        <source>Not supported for now.</source>
        <translation>暂不支持此功能。</translation>
    </message>
</context>
<context>
    <name>vendorCfgDlg</name>
    <message>
        <source>Device Info</source>
        <translation>设备信息</translation>
    </message>
    <message>
        <source>cfg file loaded：%1</source>
        <translation>已读取配置文件：%1字节</translation>
    </message>
    <message>
        <source>json parsing failed.</source>
        <translation>JSON解析失败。</translation>
    </message>
    <message>
        <source>Cfg data issued</source>
        <translation>配置数据已下发</translation>
    </message>
    <message>
        <source>File saved to %1</source>
        <translation>文件已保存到：%1</translation>
    </message>
    <message>
        <source>Fail to save file：%1</source>
        <translation>文件保存失败：%1</translation>
    </message>
    <message>
        <source>Fail to open file:%1</source>
        <translation>文件打开失败：%1</translation>
    </message>
    <message>
        <source>vendor：</source>
        <translation>厂商：</translation>
    </message>
    <message>
        <source>dev rmk：</source>
        <translation>设备备注：</translation>
    </message>
    <message>
        <source>dev point：</source>
        <translation>安装位置：</translation>
    </message>
    <message>
        <source>dev type：</source>
        <translation>设备类型：</translation>
    </message>
    <message>
        <source>in</source>
        <translation>入口</translation>
    </message>
    <message>
        <source>out</source>
        <translation>出口</translation>
    </message>
    <message>
        <source>volume：</source>
        <translation>音量：</translation>
    </message>
    <message>
        <source>Wrong volume data.</source>
        <translation>音量数据错误。</translation>
    </message>
    <message>
        <source>close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>open</source>
        <translation>开启</translation>
    </message>
    <message>
        <source>dev addr：</source>
        <translation>设备地址：</translation>
    </message>
    <message>
        <source>port：</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>gateway：</source>
        <translation>网关：</translation>
    </message>
    <message>
        <source>auto re：</source>
        <translation>自动重启：</translation>
    </message>
    <message>
        <source>time：</source>
        <translation>时间：</translation>
    </message>
    <message>
        <source>rmt enrol：</source>
        <translation>远程录入：</translation>
    </message>
    <message>
        <source>Basic Settings</source>
        <translation>基本设置</translation>
    </message>
    <message>
        <source>RTC：</source>
        <translation>RTC：</translation>
    </message>
    <message>
        <source>get RTC time</source>
        <translation>获取RTC时间</translation>
    </message>
    <message>
        <source>sync RTC time</source>
        <translation>同步RTC时间</translation>
    </message>
    <message>
        <source>TOF：</source>
        <translation>TOF：</translation>
    </message>
    <message>
        <source>get TOF corr</source>
        <translation>获取TOF校正值</translation>
    </message>
    <message>
        <source>corr TOF bias</source>
        <translation>校正TOF偏差</translation>
    </message>
    <message>
        <source>settings：</source>
        <translation>设置：</translation>
    </message>
    <message>
        <source>export logs</source>
        <translation>导出日志</translation>
    </message>
    <message>
        <source>reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>System Operation</source>
        <translation>系统操作</translation>
    </message>
    <message>
        <source>RTC time set succeeded.</source>
        <translation>RTC时间设置成功。</translation>
    </message>
    <message>
        <source>RTC time set failed.</source>
        <translation>RTC时间设置失败。</translation>
    </message>
    <message>
        <source>Fail to get RTC.</source>
        <translation>RTC时间获取失败。</translation>
    </message>
    <message>
        <source>RTC time：%1-%2-%3 %4:%5:%6</source>
        <translation>RTC时间：%1-%2-%3 %4:%5:%6</translation>
    </message>
    <message>
        <source>TOF corrected value</source>
        <translation>TOF校正值</translation>
    </message>
    <message>
        <source>Tof Bias：</source>
        <translation>TOF偏差：</translation>
    </message>
    <message>
        <source>TOF bias corrected.</source>
        <translation>TOF偏差已校正。</translation>
    </message>
    <message>
        <source>TOF bias correct failed.</source>
        <translation>TOF偏差校正失败。</translation>
    </message>
    <message>
        <source>TOF corrected value：%1</source>
        <translation>TOF校正值：%1</translation>
    </message>
    <message>
        <source>Not supported for now.</source>
        <translation>暂不支持此功能。</translation>
    </message>
</context>
</TS>
