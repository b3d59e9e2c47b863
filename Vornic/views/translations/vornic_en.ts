<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>SoundsSwitch</name>
    <message>
        <source>Sounds on or off (⌥⌘K)</source>
        <translation>Sounds on or off (Alt+Super+K)</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>⌥⌘K</source>
        <translation>Alt+Super+K</translation>
    </message>
</context>
<context>
    <name>WelcomeView</name>
    <message>
        <source>⌥⌘K</source>
        <translation>Alt+Super+K</translation>
    </message>
</context>
<context>
    <name>OutputLine</name>
    <message>
        <source>Bluetooth earphones add their own delay (about 0.2 s) that no app can remove. Wired earphones or the Mac's speakers play instantly.</source>
        <translation>Bluetooth earphones add their own delay (about 0.2 s) that no app can remove. Wired earphones or the computer's speakers play instantly.</translation>
    </message>
</context>
<context>
    <name>vornic::StudioKeysAdapter</name>
    <message numerus="yes">
        <source>%n key(s)</source>
        <translation>
            <numerusform>%n key</numerusform>
            <numerusform>%n keys</numerusform>
        </translation>
    </message>
</context>
</TS>
