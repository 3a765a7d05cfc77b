<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1">
<context>
    <name></name>
    <message>
        <source>copy</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Vyn::OvraBase::FileUtils</name>
    <message>
        <source>file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
