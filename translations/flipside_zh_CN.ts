<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Alerts</name>
    <message>
        <source>Unsupport format: %1 bits per channel, %2 sample rate, %3 channels per frame, flags: %4</source>
        <translation>不支持的格式：每声道 %1 位，采样率 %2，每帧 %3 个声道，标志：%4</translation>
    </message>
    <message>
        <source>Failed to start record.</source>
        <translation>无法开始录音。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Need to access the %1</source>
        <translation>需要访问%1</translation>
    </message>
    <message>
        <source>microphone</source>
        <translation>麦克风</translation>
    </message>
    <message>
        <source>Before continue, you must granted to access %1. Go to &quot;Apple-&gt;System Preferences...-&gt;Security &amp; Privacy-&gt;Privacy-&gt;%2&quot; to set, and then relaunch.</source>
        <translation>继续之前，请先允许访问%1。请前往“Apple-&gt;系统偏好设置...-&gt;安全性与隐私-&gt;隐私-&gt;%2”进行设置，然后重新启动程序。</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>麦克风</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>选择存放录音的文件夹</translation>
    </message>
</context>
<context>
    <name>ConfigureSheet</name>
    <message>
        <source>Encoder</source>
        <translation>编码器</translation>
    </message>
</context>
<context>
    <name>EncoderForm</name>
    <message>
        <source>Bitrate</source>
        <translation>比特率</translation>
    </message>
    <message>
        <source>Bitrate target</source>
        <translation>以比特率为目标</translation>
    </message>
    <message>
        <source>Aim at a bitrate (Alt+B)</source>
        <translation>以某一比特率为目标 (Alt+B)</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>质量</translation>
    </message>
    <message>
        <source>Quality target</source>
        <translation>以质量为目标</translation>
    </message>
    <message>
        <source>Aim at a quality (Alt+Q)</source>
        <translation>以某一质量为目标 (Alt+Q)</translation>
    </message>
    <message>
        <source>0 sounds best, 9.999 makes the smallest file</source>
        <translation>0 音质最好，9.999 文件最小</translation>
    </message>
    <message>
        <source>Quality value</source>
        <translation>质量值</translation>
    </message>
    <message>
        <source>Kilobits for each second of sound</source>
        <translation>每秒声音的千比特数</translation>
    </message>
    <message>
        <source>Bitrate value</source>
        <translation>比特率值</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>限制编码器使用恒定比特率</translation>
    </message>
    <message>
        <source>The same bitrate for all of the recording, instead of an average (Alt+R)</source>
        <translation>整个录音使用同一比特率，而不是平均值 (Alt+R)</translation>
    </message>
    <message>
        <source>Engine</source>
        <translation>引擎</translation>
    </message>
    <message>
        <source>Engine quality</source>
        <translation>引擎质量</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>VBR mode</source>
        <translation>VBR 模式</translation>
    </message>
    <message>
        <source>high</source>
        <translation>高质量</translation>
    </message>
    <message>
        <source>standard</source>
        <translation>标准</translation>
    </message>
    <message>
        <source>fast</source>
        <translation>快速</translation>
    </message>
    <message>
        <source>%1kbps</source>
        <translation>%1 kbps</translation>
    </message>
    <message>
        <source>How much time the encoder takes (Alt+E)</source>
        <translation>编码器所用的时间 (Alt+E)</translation>
    </message>
    <message>
        <source>How the encoder varies the bitrate (Alt+V)</source>
        <translation>编码器如何改变比特率 (Alt+V)</translation>
    </message>
    <message>
        <source>Alt+B</source>
        <translation>Alt+B</translation>
    </message>
    <message>
        <source>Alt+Q</source>
        <translation>Alt+Q</translation>
    </message>
    <message>
        <source>Alt+R</source>
        <translation>Alt+R</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>Alt+V</source>
        <translation>Alt+V</translation>
    </message>
</context>
<context>
    <name>HBPreferencesWndCtrl</name>
    <message>
        <source>Recordings are saved in</source>
        <translation>录音保存在</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>选择…</translation>
    </message>
    <message>
        <source>Choose folder</source>
        <translation>选择文件夹</translation>
    </message>
    <message>
        <source>Choose the folder for recordings (Alt+C)</source>
        <translation>选择存放录音的文件夹 (Alt+C)</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>显示</translation>
    </message>
    <message>
        <source>Show folder</source>
        <translation>显示文件夹</translation>
    </message>
    <message>
        <source>Show the folder in the file manager (Alt+S)</source>
        <translation>在文件管理器中显示文件夹 (Alt+S)</translation>
    </message>
    <message>
        <source>Working folder</source>
        <translation>工作文件夹</translation>
    </message>
    <message>
        <source>Show each recording in the file manager</source>
        <translation>在文件管理器中显示每个录音</translation>
    </message>
    <message>
        <source>When a recording has been stopped (Alt+F)</source>
        <translation>录音停止之后 (Alt+F)</translation>
    </message>
    <message>
        <source>Recording estimate</source>
        <translation>录音估计</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>Back to the recorder (Esc)</source>
        <translation>返回录音机 (Esc)</translation>
    </message>
    <message>
        <source>Please select a location to save the recording</source>
        <translation>请选择录音的保存位置</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>限制编码器使用恒定比特率</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>质量</translation>
    </message>
    <message>
        <source>Bitrate</source>
        <translation>比特率</translation>
    </message>
    <message>
        <source>Waiting for the disk of %1</source>
        <translation>正在等待 %1 所在的磁盘</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>two sentences</comment>
        <translation>%1%2</translation>
    </message>
    <message>
        <source>Waiting for the disk.</source>
        <translation>正在等待磁盘。</translation>
    </message>
    <message>
        <source>The folder is gone.</source>
        <translation>文件夹已不存在。</translation>
    </message>
    <message>
        <source>This is not a folder.</source>
        <translation>这不是文件夹。</translation>
    </message>
    <message>
        <source>The folder is not writable.</source>
        <translation>文件夹不可写。</translation>
    </message>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>选择存放录音的文件夹</translation>
    </message>
    <message>
        <source>Alt+C</source>
        <translation>Alt+C</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>Alt+F</source>
        <translation>Alt+F</translation>
    </message>
</context>
<context>
    <name>Herald</name>
    <message>
        <source>Stopped. %1</source>
        <translation>已停止。%1</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>已停止</translation>
    </message>
</context>
<context>
    <name>KTMP3ConfigureWndCtrl</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>关闭 (Esc)</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Input level</source>
        <translation>输入电平</translation>
    </message>
</context>
<context>
    <name>MainCard</name>
    <message>
        <source>No input device</source>
        <translation>没有输入设备</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>a command and its key</comment>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Elapsed time</source>
        <translation>已用时间</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Input device</source>
        <translation>输入设备</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>录音</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Output file</source>
        <translation>输出文件</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>在文件夹中显示</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>首选项</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Ctrl+Space</source>
        <translation>Ctrl+Space</translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation>Ctrl+P</translation>
    </message>
    <message>
        <source>Ctrl+.</source>
        <translation>Ctrl+.</translation>
    </message>
    <message>
        <source>Ctrl+Shift+R</source>
        <translation>Ctrl+Shift+R</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
</context>
<context>
    <name>PreferencesCard</name>
    <message>
        <source>Preferences</source>
        <translation>首选项</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>Cannot record: %1</source>
        <translation>无法录音：%1</translation>
    </message>
    <message>
        <source>Cannot play %1: %2</source>
        <translation>无法播放 %1：%2</translation>
    </message>
</context>
<context>
    <name>PulseStream</name>
    <message>
        <source>Recording</source>
        <translation>录音</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>播放</translation>
    </message>
</context>
<context>
    <name>Reason</name>
    <message>
        <source>this many bits a sample are not supported: %1</source>
        <translation>不支持的采样位数：%1</translation>
    </message>
    <message>
        <source>the file cannot be opened</source>
        <translation>无法打开文件</translation>
    </message>
    <message>
        <source>it is being recorded from already</source>
        <translation>已经在从该设备录音</translation>
    </message>
    <message>
        <source>a folder is being chosen already</source>
        <translation>正在选择文件夹</translation>
    </message>
    <message>
        <source>there is no such device</source>
        <translation>没有此设备</translation>
    </message>
    <message>
        <source>something else than linear PCM is asked for</source>
        <translation>要求的不是线性 PCM</translation>
    </message>
    <message>
        <source>there is no room for a thread</source>
        <translation>没有余量创建线程</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>没有此文件</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>不是普通文件</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>文件是空的</translation>
    </message>
    <message>
        <source>no MPEG audio in it</source>
        <translation>其中没有 MPEG 音频</translation>
    </message>
    <message>
        <source>the disk does not answer</source>
        <translation>磁盘没有响应</translation>
    </message>
    <message>
        <source>the sound server does not answer</source>
        <translation>声音服务器没有响应</translation>
    </message>
    <message>
        <source>there is no room for a connection to the sound server</source>
        <translation>没有余量连接声音服务器</translation>
    </message>
    <message>
        <source>Access denied</source>
        <translation>访问被拒绝</translation>
    </message>
    <message>
        <source>Connection refused</source>
        <translation>连接被拒绝</translation>
    </message>
    <message>
        <source>Connection terminated</source>
        <translation>连接已终止</translation>
    </message>
    <message>
        <source>No such entity</source>
        <translation>不存在</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>超时</translation>
    </message>
    <message>
        <source>there is no sound server: %1</source>
        <translation>没有声音服务器：%1</translation>
    </message>
    <message>
        <source>the sound server makes no progress</source>
        <translation>声音服务器没有进展</translation>
    </message>
    <message>
        <source>the stream cannot be made: %1</source>
        <translation>无法创建音频流：%1</translation>
    </message>
    <message>
        <source>the stream cannot be connected: %1</source>
        <translation>无法连接音频流：%1</translation>
    </message>
    <message>
        <source>the sound server says: %1</source>
        <translation>声音服务器报告：%1</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>磁盘已满</translation>
    </message>
    <message>
        <source>the quota is used up</source>
        <translation>配额已用完</translation>
    </message>
    <message>
        <source>the file is too large for this disk</source>
        <translation>文件对此磁盘来说太大</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>磁盘是只读的</translation>
    </message>
    <message>
        <source>the folder is not writable</source>
        <translation>文件夹不可写</translation>
    </message>
    <message>
        <source>the folder is gone</source>
        <translation>文件夹已不存在</translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation>磁盘报告错误</translation>
    </message>
    <message>
        <source>another program writes this file</source>
        <translation>另一个程序正在写入此文件</translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation>打开的文件太多</translation>
    </message>
    <message>
        <source>the computer is out of memory</source>
        <translation>计算机内存不足</translation>
    </message>
</context>
<context>
    <name>RecordingEstimate</name>
    <message>
        <source>About %1 MB an hour.</source>
        <translation>每小时约 %1 MB。</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: %2 MB an hour.</source>
        <translation>录音定为 %1 kbps：每小时 %2 MB。</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: about %2 MB an hour.</source>
        <translation>录音定为 %1 kbps：每小时约 %2 MB。</translation>
    </message>
    <message>
        <source>This disk is full.</source>
        <translation>此磁盘已满。</translation>
    </message>
    <message>
        <source>1 minute fits on this disk.</source>
        <translation>还可录 1 分钟。</translation>
    </message>
    <message numerus="yes">
        <source>%1 minutes fit on this disk.</source>
        <translation>
            <numerusform>还可录 %1 分钟。</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour fits on this disk.</source>
        <translation>还可录 1 小时。</translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <comment>less than ten, with a decimal</comment>
        <translation>
            <numerusform>还可录 %1 小时。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <translation>
            <numerusform>还可录 %1 小时。</numerusform>
        </translation>
    </message>
    <message>
        <source>Whatever bitrate is chosen here, a recording takes the highest.
A quality target makes smaller files.</source>
        <translation>无论在此选择哪个比特率，录音都使用最高的。
以质量为目标可得到更小的文件。</translation>
    </message>
    <message>
        <source>With a quality target the size depends on the sound:
music needs most, speech and silence less.</source>
        <translation>以质量为目标时，文件大小取决于声音：
音乐最大，语音和静音较小。</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>the computer was asleep</source>
        <translation>计算机处于睡眠状态</translation>
    </message>
    <message>
        <source>the sound server stood still</source>
        <translation>声音服务器停顿</translation>
    </message>
    <message>
        <source>the computer was busy</source>
        <translation>计算机繁忙</translation>
    </message>
    <message>
        <source>%1 was away</source>
        <translation>%1 曾断开</translation>
    </message>
    <message>
        <source>Recording from %1</source>
        <translation>正在从 %1 录音</translation>
    </message>
    <message>
        <source>Paused, recording from %1</source>
        <translation>已暂停，从 %1 录音</translation>
    </message>
    <message>
        <source>Playing %1</source>
        <translation>正在播放 %1</translation>
    </message>
    <message>
        <source>Paused, playing %1</source>
        <translation>已暂停，播放 %1</translation>
    </message>
    <message>
        <source>No input device</source>
        <translation>没有输入设备</translation>
    </message>
    <message>
        <source>Input device is now %1</source>
        <translation>输入设备现为 %1</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>就绪</translation>
    </message>
    <message>
        <source>Waiting for a folder to be chosen</source>
        <translation>正在等待选择文件夹</translation>
    </message>
    <message>
        <source>Nothing opens %1</source>
        <translation>没有程序能打开 %1</translation>
    </message>
</context>
<context>
    <name>TakeHandle</name>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>在文件夹中显示</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>复制路径</translation>
    </message>
</context>
<context>
    <name>TitleStrip</name>
    <message>
        <source>Minimise</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>Troubles</name>
    <message>
        <source>less than a minute</source>
        <translation>不到一分钟</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1 分钟</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n 分钟</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 分 %2 秒</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 未能写入：%2</translation>
    </message>
    <message>
        <source>the disk was too slow</source>
        <translation>磁盘太慢</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>磁盘没有响应</translation>
    </message>
    <message>
        <source>The folder is gone</source>
        <translation>文件夹已不存在</translation>
    </message>
    <message>
        <source>The file is gone</source>
        <translation>文件已不存在</translation>
    </message>
    <message>
        <source>The disk is full</source>
        <translation>磁盘已满</translation>
    </message>
    <message>
        <source>No sound is arriving from %1</source>
        <translation>没有收到来自 %1 的声音</translation>
    </message>
    <message>
        <source>The file cannot be written</source>
        <translation>无法写入文件</translation>
    </message>
    <message>
        <source>%1 is muted</source>
        <translation>%1 已静音</translation>
    </message>
    <message>
        <source>The disk is nearly full: %1 left</source>
        <translation>磁盘将满：还剩 %1</translation>
    </message>
    <message>
        <source>Only silence from %1</source>
        <translation>%1 只有静音</translation>
    </message>
    <message>
        <source>%1 are missing: %2</source>
        <translation>缺少 %1：%2</translation>
    </message>
    <message>
        <source>%1: %2 are safe in memory</source>
        <translation>%1：%2 安全地等在内存中</translation>
    </message>
</context>
<context>
    <name>WindowTitle</name>
    <message>
        <source>Recording %1 - %2</source>
        <translation>录音 %1 - %2</translation>
    </message>
    <message>
        <source>Paused %1 - %2</source>
        <translation>已暂停 %1 - %2</translation>
    </message>
    <message>
        <source>Playing - %1</source>
        <translation>正在播放 - %1</translation>
    </message>
    <message>
        <source>Playback paused - %1</source>
        <translation>播放已暂停 - %1</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Recording sound</source>
        <translation>正在录音</translation>
    </message>
</context>
</TS>
