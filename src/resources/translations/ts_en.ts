<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>Dialog</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>软件版本：V1.0</source>
        <translation>Software version: V1.0</translation>
    </message>
    <message>
        <source>驱动版本：V1.0</source>
        <translation>Driver version: V1.0</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>EqCurveExchange</name>
    <message>
        <source>导入EQ曲线…</source>
        <translation>Import EQ curve…</translation>
    </message>
    <message>
        <source>导出EQ曲线…</source>
        <translation>Export EQ curve…</translation>
    </message>
    <message>
        <source>导入EQ曲线</source>
        <translation>Import EQ curve</translation>
    </message>
    <message>
        <source>EQ曲线</source>
        <translation>EQ curves</translation>
    </message>
    <message>
        <source>所有文件</source>
        <translation>All files</translation>
    </message>
    <message>
        <source>导出EQ曲线</source>
        <translation>Export EQ curve</translation>
    </message>
    <message>
        <source>无法写入“%1”。</source>
        <translation>&quot;%1&quot; cannot be written.</translation>
    </message>
    <message>
        <source>无法导入“%1”：文件无法读取，或大于 1 MB。</source>
        <translation>&quot;%1&quot; cannot be imported: it cannot be read or is larger than 1 MB.</translation>
    </message>
    <message>
        <source>无法导入“%2”：第 %1 行有误。</source>
        <translation>&quot;%2&quot; cannot be imported: line %1 is not understood.</translation>
    </message>
    <message>
        <source>无法导入“%1”：文件中没有均衡器曲线（GraphicEQ 或 Filter 行）。</source>
        <translation>&quot;%1&quot; cannot be imported: it holds no equalizer curve (lines GraphicEQ or Filter).</translation>
    </message>
</context>
<context>
    <name>demo</name>
    <message>
        <source>访问官方网站</source>
        <translation>Visit our website</translation>
    </message>
    <message>
        <source>录音设备设置</source>
        <translation>Recording settings</translation>
    </message>
    <message>
        <source>当前版本 V%1.%2.%3</source>
        <translation>Current version V%1.%2.%3</translation>
    </message>
    <message>
        <source>耳机电量仅剩 %1%，请及时充电。</source>
        <translation>Headset battery at %1%. Please charge it soon.</translation>
    </message>
    <message>
        <source>控制面板仍在后台运行，单击此图标可重新打开。</source>
        <translation>The panel is still running. Click this icon to open it again.</translation>
    </message>
</context>
<context>
    <name>demoClass</name>
    <message>
        <source>QorSound Kit</source>
        <translation>QorSound Kit</translation>
    </message>
    <message>
        <source>当前版本V 3.0.2</source>
        <translation>Version 3.0.2</translation>
    </message>
    <message>
        <source>扬声器</source>
        <translation>Speaker</translation>
    </message>
    <message>
        <source>音量控制</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>取样频率</source>
        <translation>Sample rate</translation>
    </message>
    <message>
        <source>均衡器</source>
        <translation>Equalizer</translation>
    </message>
    <message>
        <source>空间音效</source>
        <translation>Spatial sound</translation>
    </message>
    <message>
        <source>声场定位</source>
        <translation>Sound field</translation>
    </message>
    <message>
        <source>麦克风</source>
        <translation>Mic</translation>
    </message>
    <message>
        <source>魔幻音效</source>
        <translation>Voice effects</translation>
    </message>
    <message>
        <source>降噪</source>
        <translation>Noise reduction</translation>
    </message>
    <message>
        <source>  其他</source>
        <translation>  Other</translation>
    </message>
    <message>
        <source>LED调节</source>
        <translation>LED lighting</translation>
    </message>
    <message>
        <source>升级</source>
        <translation>Upgrade</translation>
    </message>
    <message>
        <source>关于</source>
        <translation>About</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>使能Spk驱动</source>
        <translation>Enable speaker driver</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;使能Spk驱动&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Enable speaker driver&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>加载SPK驱动</source>
        <translation>Load speaker driver</translation>
    </message>
    <message>
        <source>卸载SPK驱动</source>
        <translation>Unload speaker driver</translation>
    </message>
    <message>
        <source>扬声器主音量</source>
        <translation>Speaker volume</translation>
    </message>
    <message>
        <source>10</source>
        <translation>10</translation>
    </message>
    <message>
        <source>静音</source>
        <translation>Mute</translation>
    </message>
    <message>
        <source>左</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>右</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>锁定左右声道</source>
        <translation>Lock left and right together</translation>
    </message>
    <message>
        <source>44.1 KHz</source>
        <translation>44.1 kHz</translation>
    </message>
    <message>
        <source>48 KHz</source>
        <translation>48 kHz</translation>
    </message>
    <message>
        <source>开启均衡器</source>
        <translation>Enable equalizer</translation>
    </message>
    <message>
        <source>无畏契约</source>
        <translation>VALORANT</translation>
    </message>
    <message>
        <source>反恐精英</source>
        <translation>Counter-Strike</translation>
    </message>
    <message>
        <source>三角洲行动</source>
        <translation>Delta Force</translation>
    </message>
    <message>
        <source>绝地求生</source>
        <translation>PUBG</translation>
    </message>
    <message>
        <source>穿越火线</source>
        <translation>CrossFire</translation>
    </message>
    <message>
        <source>使命召唤</source>
        <translation>Call of Duty</translation>
    </message>
    <message>
        <source>Apex英雄</source>
        <translation>Apex Legends</translation>
    </message>
    <message>
        <source>守望先锋</source>
        <translation>Overwatch</translation>
    </message>
    <message>
        <source>低频增强</source>
        <translation>Bass boost</translation>
    </message>
    <message>
        <source>默认模式</source>
        <translation>Default</translation>
    </message>
    <message>
        <source>均衡器自定义：</source>
        <translation>Custom EQ:</translation>
    </message>
    <message>
        <source>均衡器自定义</source>
        <translation>Custom EQ</translation>
    </message>
    <message>
        <source>删除选中的EQ曲线</source>
        <translation>Delete the selected EQ curve</translation>
    </message>
    <message>
        <source>保存EQ曲线</source>
        <translation>Save the EQ curve</translation>
    </message>
    <message>
        <source>恢复默认曲线</source>
        <translation>Restore the default curve</translation>
    </message>
    <message>
        <source>导入或导出EQ曲线</source>
        <translation>Import or export an EQ curve</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>20dB</source>
        <translation>20 dB</translation>
    </message>
    <message>
        <source>0dB</source>
        <translation>0 dB</translation>
    </message>
    <message>
        <source>-20dB</source>
        <translation>-20 dB</translation>
    </message>
    <message>
        <source>+4</source>
        <translation>+4</translation>
    </message>
    <message>
        <source>30</source>
        <translation>30</translation>
    </message>
    <message>
        <source>60</source>
        <translation>60</translation>
    </message>
    <message>
        <source>120</source>
        <translation>120</translation>
    </message>
    <message>
        <source>250</source>
        <translation>250</translation>
    </message>
    <message>
        <source>500</source>
        <translation>500</translation>
    </message>
    <message>
        <source>1K</source>
        <translation>1K</translation>
    </message>
    <message>
        <source>2K</source>
        <translation>2K</translation>
    </message>
    <message>
        <source>4K</source>
        <translation>4K</translation>
    </message>
    <message>
        <source>8K</source>
        <translation>8K</translation>
    </message>
    <message>
        <source>16K</source>
        <translation>16K</translation>
    </message>
    <message>
        <source>虚拟7.1声道</source>
        <translation>Virtual 7.1</translation>
    </message>
    <message>
        <source>7.1增强竞技类游戏体验</source>
        <translation>7.1 for an edge in competitive games</translation>
    </message>
    <message>
        <source>启动空间音效</source>
        <translation>Enable spatial sound</translation>
    </message>
    <message>
        <source>增加三维环绕体验,适合3A游戏,影音娱乐</source>
        <translation>Adds 3D surround for AAA games, movies and media</translation>
    </message>
    <message>
        <source>启动房间音效</source>
        <translation>Enable room effect</translation>
    </message>
    <message>
        <source>房间</source>
        <translation>Room</translation>
    </message>
    <message>
        <source>小房间</source>
        <translation>Small room</translation>
    </message>
    <message>
        <source>中房间</source>
        <translation>Medium room</translation>
    </message>
    <message>
        <source>大房间</source>
        <translation>Large room</translation>
    </message>
    <message>
        <source>环境</source>
        <translation>Environment</translation>
    </message>
    <message>
        <source>音乐厅</source>
        <translation>Concert hall</translation>
    </message>
    <message>
        <source>水底</source>
        <translation>Underwater</translation>
    </message>
    <message>
        <source>浴室</source>
        <translation>Bathroom</translation>
    </message>
    <message>
        <source>疯狂</source>
        <translation>Crazy</translation>
    </message>
    <message>
        <source>滑动可独立调节各喇叭音量</source>
        <translation>Drag to adjust each speaker</translation>
    </message>
    <message>
        <source>L </source>
        <translation>L </translation>
    </message>
    <message>
        <source>L</source>
        <translation>L</translation>
    </message>
    <message>
        <source>0db</source>
        <translation>0db</translation>
    </message>
    <message>
        <source>R</source>
        <translation>R</translation>
    </message>
    <message>
        <source>LS</source>
        <translation>LS</translation>
    </message>
    <message>
        <source>RS</source>
        <translation>RS</translation>
    </message>
    <message>
        <source>LB</source>
        <translation>LB</translation>
    </message>
    <message>
        <source>RB</source>
        <translation>RB</translation>
    </message>
    <message>
        <source>C </source>
        <translation>C </translation>
    </message>
    <message>
        <source>C</source>
        <translation>C</translation>
    </message>
    <message>
        <source>W</source>
        <translation>W</translation>
    </message>
    <message>
        <source>顺时针</source>
        <translation>Clockwise</translation>
    </message>
    <message>
        <source>逆时针</source>
        <translation>Counterclockwise</translation>
    </message>
    <message>
        <source>角度固定</source>
        <translation>Hold angle</translation>
    </message>
    <message>
        <source>角度归中</source>
        <translation>Center angle</translation>
    </message>
    <message>
        <source>恢复默认值</source>
        <translation>Restore defaults</translation>
    </message>
    <message>
        <source>减小音量</source>
        <translation>Volume down</translation>
    </message>
    <message>
        <source>声场音量</source>
        <translation>Sound field volume</translation>
    </message>
    <message>
        <source>增大音量</source>
        <translation>Volume up</translation>
    </message>
    <message>
        <source>启动声场定位</source>
        <translation>Enable sound field</translation>
    </message>
    <message>
        <source>使能Mic驱动</source>
        <translation>Enable mic driver</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;使能Mic驱动&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Enable mic driver&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>加载MIC驱动</source>
        <translation>Load mic driver</translation>
    </message>
    <message>
        <source>打开麦克风监听</source>
        <translation>Mic monitoring</translation>
    </message>
    <message>
        <source>麦克风输入</source>
        <translation>Mic input</translation>
    </message>
    <message>
        <source>-10</source>
        <translation>-10</translation>
    </message>
    <message>
        <source>麦克风静音</source>
        <translation>Mute mic</translation>
    </message>
    <message>
        <source>监听音量</source>
        <translation>Mic monitoring level</translation>
    </message>
    <message>
        <source>监听静音</source>
        <translation>Mute mic monitoring</translation>
    </message>
    <message>
        <source>16 KHz</source>
        <translation>16 kHz</translation>
    </message>
    <message>
        <source>怪兽</source>
        <translation>Monster</translation>
    </message>
    <message>
        <source>卡通</source>
        <translation>Cartoon</translation>
    </message>
    <message>
        <source>男人</source>
        <translation>Man</translation>
    </message>
    <message>
        <source>女人</source>
        <translation>Woman</translation>
    </message>
    <message>
        <source>麦克风回音</source>
        <translation>Mic echo</translation>
    </message>
    <message>
        <source>减小</source>
        <translation>Decrease</translation>
    </message>
    <message>
        <source>增大</source>
        <translation>Increase</translation>
    </message>
    <message>
        <source>启动降噪</source>
        <translation>Enable noise reduction</translation>
    </message>
    <message>
        <source>Min (dB)</source>
        <translation>Min (dB)</translation>
    </message>
    <message>
        <source>Max (dB)</source>
        <translation>Max (dB)</translation>
    </message>
    <message>
        <source>使能LED调节</source>
        <translation>Enable LED lighting</translation>
    </message>
    <message>
        <source>调色板</source>
        <translation>Palette</translation>
    </message>
    <message>
        <source>红</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>黄</source>
        <translation>Yellow</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>青</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>品红</source>
        <translation>Magenta</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>白</source>
        <translation>White</translation>
    </message>
    <message>
        <source>发光模式</source>
        <translation>Lighting mode</translation>
    </message>
    <message>
        <source>常亮</source>
        <translation>Steady</translation>
    </message>
    <message>
        <source>呼吸</source>
        <translation>Breathing</translation>
    </message>
    <message>
        <source>循环变色</source>
        <translation>Color cycle</translation>
    </message>
    <message>
        <source>音乐律动</source>
        <translation>Music rhythm</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>快</source>
        <translation>Fast</translation>
    </message>
    <message>
        <source>慢</source>
        <translation>Slow</translation>
    </message>
    <message>
        <source>G</source>
        <translation>G</translation>
    </message>
    <message>
        <source>B</source>
        <translation>B</translation>
    </message>
    <message>
        <source>调整</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>文件</source>
        <translation>File</translation>
    </message>
    <message>
        <source>浏览</source>
        <translation>Browse…</translation>
    </message>
    <message>
        <source>升级Dongle</source>
        <translation>Upgrade dongle</translation>
    </message>
    <message>
        <source>升级耳机</source>
        <translation>Upgrade headset</translation>
    </message>
    <message>
        <source>升级状态</source>
        <translation>Upgrade status</translation>
    </message>
    <message>
        <source>检查新版本</source>
        <translation>Check for updates</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Playback volume</translation>
    </message>
    <message>
        <source>播放</source>
        <translation>Playback</translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Output</translation>
    </message>
    <message>
        <source>录制</source>
        <translation>Recording</translation>
    </message>
    <message>
        <source>输入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>EQ</source>
        <translation>EQ</translation>
    </message>
    <message>
        <source>7.1</source>
        <translation>7.1</translation>
    </message>
    <message>
        <source>SF</source>
        <translation>SF</translation>
    </message>
    <message>
        <source>VE</source>
        <translation>VE</translation>
    </message>
    <message>
        <source>NU</source>
        <translation>NU</translation>
    </message>
    <message>
        <source>关闭</source>
        <comment>window</comment>
        <translation>Close</translation>
    </message>
    <message>
        <source>⾄臻流⾏</source>
        <translation>Pure pop</translation>
    </message>
    <message>
        <source>⼈声增强</source>
        <translation>Vocal boost</translation>
    </message>
    <message>
        <source>降噪强度</source>
        <translation>Noise reduction level</translation>
    </message>
    <message>
        <source>灯光指令</source>
        <translation>Lighting command</translation>
    </message>
    <message>
        <source>升级进度</source>
        <translation>Upgrade progress</translation>
    </message>
</context>
<context>
    <name>dlgsetting</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>简体中文</source>
        <translation>Simplified Chinese</translation>
    </message>
    <message>
        <source>英语</source>
        <translation>English</translation>
    </message>
    <message>
        <source>音效图标常驻显示</source>
        <translation>Keep the tray icon visible</translation>
    </message>
    <message>
        <source>不再显示开始讯息</source>
        <translation>Do not show the start message again</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Confirm</translation>
    </message>
</context>
<context>
    <name>kj</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Tip</translation>
    </message>
    <message>
        <source>不再提示此消息</source>
        <translation>Don&apos;t show again</translation>
    </message>
    <message>
        <source>知道了</source>
        <translation>Got it</translation>
    </message>
    <message>
        <source>要启用Speakers设置，请对软件左侧菜单中的
逐项功能进行设置。</source>
        <translation>To set up your speakers, go through the
features in the menu on the left.</translation>
    </message>
</context>
</TS>
