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
</context>
<context>
    <name>tessaly::EnterTextDialog</name>
    <message numerus="yes">
        <source>%1 of %n characters</source>
        <translation>
            <numerusform>%1 of %n character</numerusform>
            <numerusform>%1 of %n characters</numerusform>
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
    <name>tessaly::MacroOperations</name>
    <message numerus="yes">
        <source> (%n commands of the key cannot be read in a macro)</source>
        <translation>
            <numerusform> (%n command of the key cannot be read in a macro)</numerusform>
            <numerusform> (%n commands of the key cannot be read in a macro)</numerusform>
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
    <message numerus="yes">
        <source>waiting for %n values from the panel</source>
        <translation>
            <numerusform>waiting for %n value from the panel</numerusform>
            <numerusform>waiting for %n values from the panel</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n of them changed</source>
        <translation>
            <numerusform>%n of them changed</numerusform>
            <numerusform>%n of them changed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n values came; pane B shows the state before the update; use pane A</source>
        <translation>
            <numerusform>%n value came; pane B shows the state before the update; use pane A</numerusform>
            <numerusform>%n values came; pane B shows the state before the update; use pane A</numerusform>
        </translation>
    </message>
</context>
</TS>
