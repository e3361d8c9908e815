<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>FindingText</name>
    <message numerus="yes">
        <source>%n errors</source>
        <translation>
            <numerusform>%n error</numerusform>
            <numerusform>%n errors</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n warnings</source>
        <translation>
            <numerusform>%n warning</numerusform>
            <numerusform>%n warnings</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n note</numerusform>
            <numerusform>%n notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>HitRows</name>
    <message numerus="yes">
        <source>%n commands</source>
        <translation>
            <numerusform>%n command</numerusform>
            <numerusform>%n commands</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Overwriting</name>
    <message numerus="yes">
        <source>%1 in %2: %n commands</source>
        <translation>
            <numerusform>%1 in %2: %n command</numerusform>
            <numerusform>%1 in %2: %n commands</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RehearseTexts</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 has told all %n values.</source>
        <translation>
            <numerusform>%1 has told its %n value.</numerusform>
            <numerusform>%1 has told all %n values.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StepNames</name>
    <message numerus="yes">
        <source>insert %n commands</source>
        <translation>
            <numerusform>insert %n command</numerusform>
            <numerusform>insert %n commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>delete %n commands</source>
        <translation>
            <numerusform>delete %n command</numerusform>
            <numerusform>delete %n commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>move %n commands</source>
        <translation>
            <numerusform>move %n command</numerusform>
            <numerusform>move %n commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>take %n differences</source>
        <translation>
            <numerusform>take %n difference</numerusform>
            <numerusform>take %n differences</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>cut %n commands</source>
        <translation>
            <numerusform>cut %n command</numerusform>
            <numerusform>cut %n commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>paste %n commands</source>
        <translation>
            <numerusform>paste %n command</numerusform>
            <numerusform>paste %n commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>duplicate %n commands</source>
        <translation>
            <numerusform>duplicate %n command</numerusform>
            <numerusform>duplicate %n commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>update of %n values</source>
        <translation>
            <numerusform>update of %n value</numerusform>
            <numerusform>update of %n values</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>change %n texts</source>
        <translation>
            <numerusform>change %n text</numerusform>
            <numerusform>change %n texts</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>capture of %n values</source>
        <translation>
            <numerusform>capture of %n value</numerusform>
            <numerusform>capture of %n values</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::CaptureWindow</name>
    <message numerus="yes">
        <source>the %n selected commands</source>
        <translation>
            <numerusform>the %n selected command</numerusform>
            <numerusform>the %n selected commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n values taken over; &quot;Undo&quot; in the pane takes them back.</source>
        <translation>
            <numerusform>%n value taken over; &quot;Undo&quot; in the pane takes it back.</numerusform>
            <numerusform>%n values taken over; &quot;Undo&quot; in the pane takes them back.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n did not come; &quot;Ask Again&quot; asks for them.</source>
        <translation>
            <numerusform>%n did not come; &quot;Ask Again&quot; asks for it.</numerusform>
            <numerusform>%n did not come; &quot;Ask Again&quot; asks for them.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands were changed meanwhile and stay as they are; &quot;Capture Anew&quot; begins with the macro as it is now.</source>
        <translation>
            <numerusform>%n command was changed meanwhile and stays as it is; &quot;Capture Anew&quot; begins with the macro as it is now.</numerusform>
            <numerusform>%n commands were changed meanwhile and stay as they are; &quot;Capture Anew&quot; begins with the macro as it is now.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::CheckWindow</name>
    <message numerus="yes">
        <source>%n macros looked at</source>
        <translation>
            <numerusform>%n macro looked at</numerusform>
            <numerusform>%n macros looked at</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n errors</source>
        <translation>
            <numerusform>%n error</numerusform>
            <numerusform>%n errors</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n warnings</source>
        <translation>
            <numerusform>%n warning</numerusform>
            <numerusform>%n warnings</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n note</numerusform>
            <numerusform>%n notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::Checking</name>
    <message numerus="yes">
        <source>%1 of %n macros have errors:</source>
        <translation>
            <numerusform>%1 of %n macro has errors:</numerusform>
            <numerusform>%1 of %n macros have errors:</numerusform>
        </translation>
    </message>
</context>
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
    <name>tessaly::CommandList</name>
    <message numerus="yes">
        <source>%n commands</source>
        <translation>
            <numerusform>%n command</numerusform>
            <numerusform>%n commands</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::CommandRuns</name>
    <message numerus="yes">
        <source>%n commands NOT deleted</source>
        <translation>
            <numerusform>%n command NOT deleted</numerusform>
            <numerusform>%n commands NOT deleted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands deleted</source>
        <translation>
            <numerusform>%n command deleted</numerusform>
            <numerusform>%n commands deleted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands copied</source>
        <translation>
            <numerusform>%n command copied</numerusform>
            <numerusform>%n commands copied</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands cut</source>
        <translation>
            <numerusform>%n command cut</numerusform>
            <numerusform>%n commands cut</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands pasted</source>
        <translation>
            <numerusform>%n command pasted</numerusform>
            <numerusform>%n commands pasted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands duplicated</source>
        <translation>
            <numerusform>%n command duplicated</numerusform>
            <numerusform>%n commands duplicated</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands moved; they are commands %1 to %2 now</source>
        <translation>
            <numerusform>%n command moved; it is command %1 to %2 now</numerusform>
            <numerusform>%n commands moved; they are commands %1 to %2 now</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands moved to the other pane</source>
        <translation>
            <numerusform>%n command moved to the other pane</numerusform>
            <numerusform>%n commands moved to the other pane</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::CompareWindow</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>take %n differences from %1</source>
        <translation>
            <numerusform>take %n difference from %1</numerusform>
            <numerusform>take %n differences from %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n differences taken into %1; nothing is saved yet</source>
        <translation>
            <numerusform>%n difference taken into %1; nothing is saved yet</numerusform>
            <numerusform>%n differences taken into %1; nothing is saved yet</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::CreateCommandDialog</name>
    <message numerus="yes">
        <source>%n inserted</source>
        <translation>
            <numerusform>%n inserted</numerusform>
            <numerusform>%n inserted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n found</numerusform>
            <numerusform>%n found</numerusform>
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
    <name>tessaly::ReplaceWindow</name>
    <message numerus="yes">
        <source>%n macros looked at</source>
        <translation>
            <numerusform>%n macro looked at</numerusform>
            <numerusform>%n macros looked at</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands</source>
        <translation>
            <numerusform>%n command</numerusform>
            <numerusform>%n commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands cannot.</source>
        <translation>
            <numerusform>%n command cannot.</numerusform>
            <numerusform>%n commands cannot.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Writing %n macros...</source>
        <translation>
            <numerusform>Writing %n macro...</numerusform>
            <numerusform>Writing %n macros...</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>replacement in %n macros</source>
        <translation>
            <numerusform>replacement in %n macro</numerusform>
            <numerusform>replacement in %n macros</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Replaced in %n macros; &quot;Undo&quot; in the menu &quot;Macro&quot; takes it back.</source>
        <translation>
            <numerusform>Replaced in %n macro; &quot;Undo&quot; in the menu &quot;Macro&quot; takes it back.</numerusform>
            <numerusform>Replaced in %n macros; &quot;Undo&quot; in the menu &quot;Macro&quot; takes it back.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>NOTHING was replaced: %n macros have errors.</source>
        <translation>
            <numerusform>NOTHING was replaced: %n macro has errors.</numerusform>
            <numerusform>NOTHING was replaced: %n macros have errors.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::SearchWindow</name>
    <message numerus="yes">
        <source>%n macros looked at</source>
        <translation>
            <numerusform>%n macro looked at</numerusform>
            <numerusform>%n macros looked at</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands</source>
        <translation>
            <numerusform>%n command</numerusform>
            <numerusform>%n commands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n macros</source>
        <translation>
            <numerusform>%n macro</numerusform>
            <numerusform>%n macros</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n files could not be read.</source>
        <translation>
            <numerusform>%n file could not be read.</numerusform>
            <numerusform>%n files could not be read.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::SheetWindow</name>
    <message numerus="yes">
        <source>%n macros could not be read; the sheet says why.</source>
        <translation>
            <numerusform>%n macro could not be read; the sheet says why.</numerusform>
            <numerusform>%n macros could not be read; the sheet says why.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::SnapshotRestoreDialog</name>
    <message numerus="yes">
        <source>%1 of %n macros are ticked</source>
        <translation>
            <numerusform>%1 of %n macro is ticked</numerusform>
            <numerusform>%1 of %n macros are ticked</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n macros are restored</source>
        <translation>
            <numerusform>%n macro is restored</numerusform>
            <numerusform>%n macros are restored</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1; %n macros are NOT</source>
        <translation>
            <numerusform>%1; %n macro is NOT</numerusform>
            <numerusform>%1; %n macros are NOT</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1; of %n of them what the panel holds now is unknown</source>
        <translation>
            <numerusform>%1; of %n of them what the panel holds now is unknown</numerusform>
            <numerusform>%1; of %n of them what the panel holds now is unknown</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::Snapshots</name>
    <message numerus="yes">
        <source>saved and verified: %n macros in %1</source>
        <translation>
            <numerusform>saved and verified: %n macro in %1</numerusform>
            <numerusform>saved and verified: %n macros in %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>restore of %n macros</source>
        <translation>
            <numerusform>restore of %n macro</numerusform>
            <numerusform>restore of %n macros</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::StatusStrip</name>
    <message numerus="yes">
        <source> (and %n failures before it)</source>
        <translation>
            <numerusform> (and %n failure before it)</numerusform>
            <numerusform> (and %n failures before it)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::StepOperations</name>
    <message numerus="yes">
        <source>%n steps undone</source>
        <translation>
            <numerusform>%n step undone</numerusform>
            <numerusform>%n steps undone</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n steps redone</source>
        <translation>
            <numerusform>%n step redone</numerusform>
            <numerusform>%n steps redone</numerusform>
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
        <source>%n values came; pane B shows the state before the update; use pane A, or &quot;Capture...&quot; in the menu &quot;Macro&quot;</source>
        <translation>
            <numerusform>%n value came; pane B shows the state before the update; use pane A, or &quot;Capture...&quot; in the menu &quot;Macro&quot;</numerusform>
            <numerusform>%n values came; pane B shows the state before the update; use pane A, or &quot;Capture...&quot; in the menu &quot;Macro&quot;</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::WorkplacesWindow</name>
    <message numerus="yes">
        <source>Nothing was copied: %n macros have errors.</source>
        <translation>
            <numerusform>Nothing was copied: %n macro has errors.</numerusform>
            <numerusform>Nothing was copied: %n macros have errors.</numerusform>
        </translation>
    </message>
</context>
</TS>
