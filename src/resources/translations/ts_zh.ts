<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- What Chinese says differently from the texts of the forms and the code. At least one text must stay: a file
     without any cannot be loaded. -->
<TS version="2.1" language="zh_CN" sourcelanguage="zh_CN">
<context>
    <name>demo</name>
    <message>
        <source>当前版本 V%1.%2.%3</source>
        <translation>当前版本 V%1.%2.%3</translation>
    </message>
</context>
<context>
    <name>demoClass</name>
    <message>
        <source>Playback</source>
        <translation>播放音量</translation>
    </message>
</context>
</TS>
