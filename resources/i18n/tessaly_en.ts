<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>tessaly::CommandEditing</name>
    <message numerus="yes">
        <source>%n commands inserted</source>
        <translation>
            <numerusform>%n command inserted</numerusform>
            <numerusform>%n commands inserted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>; %n of them lack a parameter, see &quot;modify&quot;</source>
        <translation>
            <numerusform>; %n of them lacks a parameter, see &quot;modify&quot;</numerusform>
            <numerusform>; %n of them lack a parameter, see &quot;modify&quot;</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::ListFinder</name>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n found</numerusform>
            <numerusform>%n found</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::Recovery</name>
    <message numerus="yes">
        <source>%n commands; changed from %1 to %2</source>
        <translation>
            <numerusform>%n command; changed from %1 to %2</numerusform>
            <numerusform>%n commands; changed from %1 to %2</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::ValueUpdate</name>
    <message numerus="yes">
        <source>%n commands updated</source>
        <translation>
            <numerusform>%n command updated</numerusform>
            <numerusform>%n commands updated</numerusform>
        </translation>
    </message>
</context>
</TS>
