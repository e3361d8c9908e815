<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>For panel software release 4.2</source>
        <translation>Für Bedienpult-Software Version 4.2</translation>
    </message>
</context>
<context>
    <name>ActFinder</name>
    <message>
        <source>Find an Act</source>
        <translation>Eine Tätigkeit finden</translation>
    </message>
    <message>
        <source>words of what is to be done</source>
        <translation>Wörter für das, was zu tun ist</translation>
    </message>
    <message>
        <source>Words of what is to be done</source>
        <translation>Wörter für das, was zu tun ist</translation>
    </message>
    <message>
        <source>Acts that were found</source>
        <translation>Gefundene Tätigkeiten</translation>
    </message>
    <message>
        <source>Act</source>
        <translation>Tätigkeit</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>Why not now</source>
        <translation>Warum jetzt nicht</translation>
    </message>
</context>
<context>
    <name>ActMenu</name>
    <message>
        <source>Ma&amp;cro</source>
        <translation>M&amp;akro</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeitun&amp;g</translation>
    </message>
    <message>
        <source>Comp&amp;are</source>
        <translation>&amp;Vergleichen</translation>
    </message>
    <message>
        <source>Review</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Panel</source>
        <translation>Bedienpult</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>Ansi&amp;cht</translation>
    </message>
    <message>
        <source>Site</source>
        <translation>Anlage</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
</context>
<context>
    <name>Acts</name>
    <message>
        <source>the functions are still being read</source>
        <translation>die Funktionen werden noch gelesen</translation>
    </message>
    <message>
        <source>the pane shows the disk: let it show the panel first</source>
        <translation>der Bereich zeigt die Platte: erst das Bedienpult zeigen lassen</translation>
    </message>
    <message>
        <source>the pane is not connected to a panel</source>
        <translation>der Bereich ist mit keinem Bedienpult verbunden</translation>
    </message>
    <message>
        <source>the pane has unsaved changes: save or discard them first</source>
        <translation>der Bereich enthält ungespeicherte Änderungen: erst speichern oder verwerfen</translation>
    </message>
    <message>
        <source>the pane shows a snapshot: close it first</source>
        <translation>der Bereich zeigt einen Abzug: ihn erst schließen</translation>
    </message>
    <message>
        <source>what the pane shows can only be viewed or copied from</source>
        <translation>was der Bereich zeigt, kann nur angesehen oder kopiert werden</translation>
    </message>
    <message>
        <source>no workplace is chosen</source>
        <translation>kein Arbeitsplatz ist gewählt</translation>
    </message>
    <message>
        <source>no macro is chosen in the other pane</source>
        <translation>im anderen Bereich ist kein Makro gewählt</translation>
    </message>
    <message>
        <source>no macro is chosen</source>
        <translation>kein Makro ist gewählt</translation>
    </message>
    <message>
        <source>no commands are shown</source>
        <translation>es werden keine Befehle gezeigt</translation>
    </message>
    <message>
        <source>no command is selected</source>
        <translation>kein Befehl ist ausgewählt</translation>
    </message>
    <message>
        <source>select one command, and no other</source>
        <translation>genau einen Befehl auswählen</translation>
    </message>
    <message>
        <source>the macro cannot be saved without a loss</source>
        <translation>das Makro lässt sich nicht ohne Verlust speichern</translation>
    </message>
    <message>
        <source>there are no unsaved changes</source>
        <translation>es gibt keine ungespeicherten Änderungen</translation>
    </message>
    <message>
        <source>there is no step to undo</source>
        <translation>es gibt keinen Schritt, der zurückzunehmen wäre</translation>
    </message>
    <message>
        <source>there is no step to make again</source>
        <translation>es gibt keinen Schritt, der zu wiederholen wäre</translation>
    </message>
    <message>
        <source>the macro has no steps</source>
        <translation>das Makro hat keine Schritte</translation>
    </message>
    <message>
        <source>nothing was done to a whole macro since the start</source>
        <translation>seit dem Start wurde an keinem ganzen Makro etwas getan</translation>
    </message>
    <message>
        <source>the pane shows no snapshot</source>
        <translation>der Bereich zeigt keinen Abzug</translation>
    </message>
    <message>
        <source>it needs a macro, and a connected panel behind the pane</source>
        <translation>nötig sind ein Makro und ein verbundenes Bedienpult hinter dem Bereich</translation>
    </message>
    <message>
        <source>it is not possible in this pane now</source>
        <translation>in diesem Bereich ist das jetzt nicht möglich</translation>
    </message>
    <message>
        <source>&amp;Undo &quot;%1&quot;</source>
        <translation>&amp;Rückgängig: „%1“</translation>
    </message>
    <message>
        <source>&amp;Redo &quot;%1&quot;</source>
        <translation>&amp;Wiederholen: „%1“</translation>
    </message>
    <message>
        <source>Save &amp;Panel As...</source>
        <translation>&amp;Bedienpult speichern unter...</translation>
    </message>
    <message>
        <source>Disco&amp;nnect</source>
        <translation>Tre&amp;nnen</translation>
    </message>
    <message>
        <source>&amp;New...</source>
        <translation>&amp;Neu...</translation>
    </message>
    <message>
        <source>create</source>
        <translation>anlegen erstellen</translation>
    </message>
    <message>
        <source>&amp;Open File...</source>
        <translation>Datei ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>load macro from anywhere</source>
        <translation>Makro von irgendwo laden</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>save changes send to the panel</source>
        <translation>Änderungen speichern an das Bedienpult senden</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>&amp;Discard Changes</source>
        <translation>Änderungen &amp;verwerfen</translation>
    </message>
    <message>
        <source>revert throw away</source>
        <translation>zurück wegwerfen</translation>
    </message>
    <message>
        <source>Cop&amp;y from the Other Pane...</source>
        <translation>Aus der anderen Seite &amp;kopieren...</translation>
    </message>
    <message>
        <source>send to the panel transfer</source>
        <translation>an das Bedienpult senden übertragen</translation>
    </message>
    <message>
        <source>Rena&amp;me...</source>
        <translation>U&amp;mbenennen...</translation>
    </message>
    <message>
        <source>De&amp;lete...</source>
        <translation>&amp;Löschen...</translation>
    </message>
    <message>
        <source>remove</source>
        <translation>entfernen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>take back whole macro</source>
        <translation>zurücknehmen ganzes Makro</translation>
    </message>
    <message>
        <source>&amp;History...</source>
        <translation>&amp;Verlauf...</translation>
    </message>
    <message>
        <source>get back earlier version overwritten deleted</source>
        <translation>zurückholen frühere Fassung überschrieben gelöscht</translation>
    </message>
    <message>
        <source>R&amp;ehearse...</source>
        <translation>Prob&amp;en...</translation>
    </message>
    <message>
        <source>try effect after this macro</source>
        <translation>ausprobieren Wirkung nach diesem Makro</translation>
    </message>
    <message>
        <source>Ca&amp;pture...</source>
        <translation>Au&amp;fnehmen...</translation>
    </message>
    <message>
        <source>values of the panel preview</source>
        <translation>Werte des Bedienpults Vorschau</translation>
    </message>
    <message>
        <source>Pr&amp;int...</source>
        <translation>&amp;Drucken...</translation>
    </message>
    <message>
        <source>paper sheet</source>
        <translation>Papier Blatt</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
    <message>
        <source>PDF HTML CSV sheet file</source>
        <translation>PDF HTML CSV Blatt Datei</translation>
    </message>
    <message>
        <source>take back step</source>
        <translation>zurücknehmen Schritt</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>again step</source>
        <translation>noch einmal Schritt</translation>
    </message>
    <message>
        <source>&amp;Steps...</source>
        <translation>&amp;Schritte...</translation>
    </message>
    <message>
        <source>undo list</source>
        <translation>rückgängig Liste</translation>
    </message>
    <message>
        <source>C&amp;ut</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>insert clipboard</source>
        <translation>einsetzen Zwischenablage</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <translation>&amp;Duplizieren</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>order</source>
        <translation>Reihenfolge verschieben</translation>
    </message>
    <message>
        <source>Move Do&amp;wn</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>A&amp;lle auswählen</translation>
    </message>
    <message>
        <source>&amp;Find in the List...</source>
        <translation>In der Liste &amp;finden...</translation>
    </message>
    <message>
        <source>&amp;New Command...</source>
        <translation>&amp;Neuer Befehl...</translation>
    </message>
    <message>
        <source>insert add build panel style function</source>
        <translation>einfügen bauen Funktion</translation>
    </message>
    <message>
        <source>New &amp;Multiple Commands...</source>
        <translation>&amp;Viele neue Befehle...</translation>
    </message>
    <message>
        <source>insert add build many record</source>
        <translation>einfügen bauen mehrere aufzeichnen</translation>
    </message>
    <message>
        <source>New C&amp;lassic Command...</source>
        <translation>Neuer &amp;klassischer Befehl...</translation>
    </message>
    <message>
        <source>insert add build</source>
        <translation>einfügen bauen</translation>
    </message>
    <message>
        <source>Modif&amp;y Command...</source>
        <translation>Befehl än&amp;dern...</translation>
    </message>
    <message>
        <source>change edit value</source>
        <translation>bearbeiten Wert</translation>
    </message>
    <message>
        <source>D&amp;elete Commands</source>
        <translation>Befehle l&amp;öschen</translation>
    </message>
    <message>
        <source>&amp;What Have I Changed?</source>
        <translation>&amp;Was habe ich geändert?</translation>
    </message>
    <message>
        <source>difference target saved</source>
        <translation>Unterschied Ziel gespeichert</translation>
    </message>
    <message>
        <source>&amp;Both Panes</source>
        <translation>&amp;Beide Seiten</translation>
    </message>
    <message>
        <source>difference macros</source>
        <translation>Unterschied Makros</translation>
    </message>
    <message>
        <source>With a &amp;Version of the History...</source>
        <translation>Mit einer &amp;Fassung des Verlaufs...</translation>
    </message>
    <message>
        <source>difference earlier</source>
        <translation>Unterschied früher</translation>
    </message>
    <message>
        <source>Work&amp;places...</source>
        <translation>A&amp;rbeitsplätze...</translation>
    </message>
    <message>
        <source>difference folders copy many</source>
        <translation>Unterschied Ordner viele kopieren</translation>
    </message>
    <message>
        <source>&amp;Check...</source>
        <translation>&amp;Prüfen...</translation>
    </message>
    <message>
        <source>errors warnings what is wrong</source>
        <translation>Fehler Warnungen was ist falsch</translation>
    </message>
    <message>
        <source>&amp;Search...</source>
        <translation>&amp;Suchen...</translation>
    </message>
    <message>
        <source>find in all macros</source>
        <translation>in allen Makros finden</translation>
    </message>
    <message>
        <source>&amp;Where Used...</source>
        <translation>&amp;Wo verwendet...</translation>
    </message>
    <message>
        <source>find function source</source>
        <translation>finden Funktion Quelle</translation>
    </message>
    <message>
        <source>&amp;Replace in Macros...</source>
        <translation>&amp;In Makros ersetzen...</translation>
    </message>
    <message>
        <source>change many retarget all macros</source>
        <translation>viele ändern alle Makros</translation>
    </message>
    <message>
        <source>Show the &amp;Panel</source>
        <translation>Das &amp;Bedienpult zeigen</translation>
    </message>
    <message>
        <source>source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Show the &amp;Disk</source>
        <translation>Die &amp;Platte zeigen</translation>
    </message>
    <message>
        <source>source harddisk path</source>
        <translation>Quelle Festplatte Pfad</translation>
    </message>
    <message>
        <source>&amp;Address or Path</source>
        <translation>&amp;Adresse oder Pfad</translation>
    </message>
    <message>
        <source>IP type go</source>
        <translation>IP tippen gehen</translation>
    </message>
    <message>
        <source>Co&amp;nnect</source>
        <translation>Verbi&amp;nden</translation>
    </message>
    <message>
        <source>line address leave</source>
        <translation>Leitung Adresse verlassen</translation>
    </message>
    <message>
        <source>&amp;Update Values</source>
        <translation>Werte a&amp;ktualisieren</translation>
    </message>
    <message>
        <source>fetch current data</source>
        <translation>aktuelle Daten holen</translation>
    </message>
    <message>
        <source>Chec&amp;k What It Holds...</source>
        <translation>Prüfen, was darin &amp;steht...</translation>
    </message>
    <message>
        <source>errors warnings workplace</source>
        <translation>Fehler Warnungen Arbeitsplatz</translation>
    </message>
    <message>
        <source>Save &amp;Folder As...</source>
        <translation>&amp;Ordner speichern unter...</translation>
    </message>
    <message>
        <source>snapshot backup panel</source>
        <translation>Abzug Sicherung Bedienpult</translation>
    </message>
    <message>
        <source>&amp;Open Snapshot...</source>
        <translation>Abzug ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>backup show</source>
        <translation>Sicherung zeigen</translation>
    </message>
    <message>
        <source>&amp;Restore Snapshot...</source>
        <translation>Abzug &amp;wiederherstellen...</translation>
    </message>
    <message>
        <source>backup put back panel</source>
        <translation>Sicherung zurückspielen Bedienpult</translation>
    </message>
    <message>
        <source>&amp;Close Snapshot</source>
        <translation>Abzug s&amp;chließen</translation>
    </message>
    <message>
        <source>the language is another one from the next start on</source>
        <translation>die Sprache ist vom nächsten Start an eine andere</translation>
    </message>
    <message>
        <source>&amp;Other Pane</source>
        <translation>Anderer &amp;Bereich</translation>
    </message>
    <message>
        <source>switch change side</source>
        <translation>wechseln andere Seite</translation>
    </message>
    <message>
        <source>Desti&amp;nations of the Commands</source>
        <translation>&amp;Ziele der Befehle</translation>
    </message>
    <message>
        <source>mainframe</source>
        <translation>Mainframe</translation>
    </message>
    <message>
        <source>Commands as &amp;Stored</source>
        <translation>Befehle, wie sie &amp;gespeichert sind</translation>
    </message>
    <message>
        <source>raw</source>
        <translation>roh</translation>
    </message>
    <message>
        <source>Names and &amp;Values in Columns</source>
        <translation>Namen und &amp;Werte in Spalten</translation>
    </message>
    <message>
        <source>tabs</source>
        <translation>Tabulatoren</translation>
    </message>
    <message>
        <source>Colours of the Des&amp;ktop</source>
        <translation>Farben der &amp;Arbeitsumgebung</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>colours palette day</source>
        <translation>Farben Palette Tag</translation>
    </message>
    <message>
        <source>&amp;Dark, for the Night</source>
        <translation>&amp;Dunkel, für die Nacht</translation>
    </message>
    <message>
        <source>colours palette</source>
        <translation>Farben Palette</translation>
    </message>
    <message>
        <source>La&amp;rger Text</source>
        <translation>Größere &amp;Schrift</translation>
    </message>
    <message>
        <source>zoom size font</source>
        <translation>vergrößern Größe Schrift</translation>
    </message>
    <message>
        <source>S&amp;maller Text</source>
        <translation>&amp;Kleinere Schrift</translation>
    </message>
    <message>
        <source>&amp;Usual Text Size</source>
        <translation>&amp;Übliche Schriftgröße</translation>
    </message>
    <message>
        <source>Lan&amp;guage of the Desktop</source>
        <translation>&amp;Sprache der Arbeitsumgebung</translation>
    </message>
    <message>
        <source>German language</source>
        <translation>deutsche Sprache</translation>
    </message>
    <message>
        <source>language</source>
        <translation>englische Sprache</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>site folder root installation</source>
        <translation>Anlagendaten Ordner Installation</translation>
    </message>
    <message>
        <source>&amp;Choose...</source>
        <translation>&amp;Wählen...</translation>
    </message>
    <message>
        <source>site first start set up</source>
        <translation>Anlagendaten erster Start einrichten</translation>
    </message>
    <message>
        <source>Open the &amp;Sample Site</source>
        <translation>Die &amp;Beispielanlage öffnen</translation>
    </message>
    <message>
        <source>practise training example</source>
        <translation>üben Schulung Beispiel</translation>
    </message>
    <message>
        <source>User &amp;Guide</source>
        <translation>&amp;Handbuch</translation>
    </message>
    <message>
        <source>help manual</source>
        <translation>Hilfe Anleitung</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Tasten</translation>
    </message>
    <message>
        <source>shortcuts keyboard help</source>
        <translation>Tastenkürzel Tastatur Hilfe</translation>
    </message>
    <message>
        <source>&amp;What&apos;s This?</source>
        <translation>&amp;Was ist das?</translation>
    </message>
    <message>
        <source>explain help</source>
        <translation>erklären Hilfe</translation>
    </message>
    <message>
        <source>&amp;Find an Act...</source>
        <translation>Eine &amp;Tätigkeit finden...</translation>
    </message>
    <message>
        <source>palette menu search</source>
        <translation>Palette Menü suchen</translation>
    </message>
    <message>
        <source>version licence</source>
        <translation>Fassung Lizenz</translation>
    </message>
    <message>
        <source>Stri&amp;pes by Destination</source>
        <translation>&amp;Streifen nach Ziel</translation>
    </message>
    <message>
        <source>colours rows mainframe</source>
        <translation>Farben Zeilen Mainframe</translation>
    </message>
    <message>
        <source>&amp;Headings over the Commands</source>
        <translation>Überschriften über den &amp;Befehlen</translation>
    </message>
    <message>
        <source>band place what am I looking at</source>
        <translation>Band Ort was sehe ich</translation>
    </message>
</context>
<context>
    <name>BatchUndo</name>
    <message>
        <source>Undo &quot;%1&quot;?</source>
        <translation>„%1“ rückgängig machen?</translation>
    </message>
    <message>
        <source>NOT undone: %1 (%2)</source>
        <translation>NICHT rückgängig gemacht: %1 (%2)</translation>
    </message>
    <message>
        <source>nothing has been changed</source>
        <translation>nichts ist geändert worden</translation>
    </message>
    <message>
        <source>undo of %1</source>
        <translation>Rücknahme: %1</translation>
    </message>
    <message>
        <source>Undoing %1</source>
        <translation>%1 wird rückgängig gemacht</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Speicher reicht nicht</translation>
    </message>
    <message>
        <source>NOT undone: %1</source>
        <translation>NICHT rückgängig gemacht: %1</translation>
    </message>
    <message>
        <source>undone: %1</source>
        <translation>rückgängig gemacht: %1</translation>
    </message>
    <message>
        <source>%1; %2 of %3 macros are not as they were before (%4)</source>
        <translation>%1; %2 von %3 Makros sind nicht wie vorher (%4)</translation>
    </message>
    <message>
        <source>the history no longer has what was there before</source>
        <translation>der Verlauf hat nicht mehr, was vorher da war</translation>
    </message>
</context>
<context>
    <name>CaptureWindow</name>
    <message>
        <source>&amp;Of:</source>
        <translation>&amp;Von:</translation>
    </message>
    <message>
        <source>&amp;Differences only</source>
        <translation>Nur &amp;Unterschiede</translation>
    </message>
    <message>
        <source>As&amp;k Again</source>
        <translation>&amp;Erneut fragen</translation>
    </message>
    <message>
        <source>Ask the panel for what did not come; what has come stays</source>
        <translation>Das Pult nach dem fragen, was nicht gekommen ist; was gekommen ist, bleibt</translation>
    </message>
    <message>
        <source>Capture &amp;Anew</source>
        <translation>Neu &amp;aufnehmen</translation>
    </message>
    <message>
        <source>Ask for all values again, for the macro as it is now (F5)</source>
        <translation>Alle Werte noch einmal erfragen, für das Makro, wie es jetzt ist (F5)</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>&amp;Select All</source>
        <translation>A&amp;lle wählen</translation>
    </message>
    <message>
        <source>Tick all that differ</source>
        <translation>Alle ankreuzen, die abweichen</translation>
    </message>
    <message>
        <source>Select &amp;None</source>
        <translation>&amp;Keine wählen</translation>
    </message>
    <message>
        <source>Tick nothing</source>
        <translation>Nichts ankreuzen</translation>
    </message>
    <message>
        <source>&amp;Take Over</source>
        <translation>&amp;Übernehmen</translation>
    </message>
    <message>
        <source>Write what is ticked into the macro, as one step</source>
        <translation>Was angekreuzt ist, als einen Schritt in das Makro schreiben</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>CheckRulesDialog</name>
    <message>
        <source>Rules</source>
        <translation>Regeln</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regel</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Schwere</translation>
    </message>
    <message>
        <source>What it tells</source>
        <translation>Was sie meldet</translation>
    </message>
    <message>
        <source>&amp;Rules without a tick are off for this site, for everybody.</source>
        <translation>&amp;Regeln ohne Haken sind an diesem Standort aus.</translation>
    </message>
</context>
<context>
    <name>CheckWindow</name>
    <message>
        <source>&amp;Look at:</source>
        <translation>&amp;Ansehen:</translation>
    </message>
    <message>
        <source>&amp;Check</source>
        <translation>&amp;Prüfen</translation>
    </message>
    <message>
        <source>Look at it anew (F5)</source>
        <translation>Neu ansehen (F5)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>End the check; what was found stays in the list</source>
        <translation>Die Prüfung beenden; was gefunden wurde, bleibt in der Liste</translation>
    </message>
    <message>
        <source>Findings</source>
        <translation>Befunde</translation>
    </message>
    <message>
        <source>Progress of the check</source>
        <translation>Fortschritt der Prüfung</translation>
    </message>
    <message>
        <source>&amp;Rules...</source>
        <translation>&amp;Regeln...</translation>
    </message>
    <message>
        <source>Switch rules on and off for this site</source>
        <translation>Regeln für diesen Standort ein- und ausschalten</translation>
    </message>
    <message>
        <source>&amp;Fix</source>
        <translation>&amp;Beheben</translation>
    </message>
    <message>
        <source>Put in what would be right, as a step that &quot;Undo&quot; takes back</source>
        <translation>Das Richtige einsetzen, als Schritt, den „Rückgängig“ zurücknimmt</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Show the command in its macro (Enter)</source>
        <translation>Den Befehl in seinem Makro zeigen (Eingabetaste)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>ClassicEditorDialog</name>
    <message>
        <source>Description:</source>
        <translation>Beschreibung:</translation>
    </message>
    <message>
        <source>Codes:</source>
        <translation>Codes:</translation>
    </message>
    <message>
        <source>Bytes:</source>
        <translation>Bytes:</translation>
    </message>
    <message>
        <source>Where the command goes to</source>
        <translation>Ziel des Befehls festlegen</translation>
    </message>
    <message>
        <source>Forget what was chosen and begin again</source>
        <translation>Auswahl verwerfen und von vorn beginnen</translation>
    </message>
    <message>
        <source>Put the command in front of all others</source>
        <translation>Befehl vor allen anderen einfügen</translation>
    </message>
    <message>
        <source>Put the command in front of the selected one</source>
        <translation>Befehl vor dem ausgewählten einfügen</translation>
    </message>
    <message>
        <source>Put the command behind all others</source>
        <translation>Befehl hinter allen anderen einfügen</translation>
    </message>
</context>
<context>
    <name>CompareTexts</name>
    <message>
        <source>only in %1</source>
        <translation>nur in %1</translation>
    </message>
    <message>
        <source>moved to %1</source>
        <translation>verschoben nach %1</translation>
    </message>
    <message>
        <source>moved from %1</source>
        <translation>verschoben von %1</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>other spelling</source>
        <translation>andere Schreibweise</translation>
    </message>
    <message>
        <source>unknown parts</source>
        <translation>unbekannte Teile</translation>
    </message>
    <message>
        <source>destination</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>workplace</source>
        <translation>Arbeitsplatz</translation>
    </message>
    <message>
        <source>group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>module</source>
        <translation>Modul</translation>
    </message>
    <message>
        <source>widget</source>
        <translation>Bedienelement</translation>
    </message>
    <message>
        <source>order of the parameters</source>
        <translation>Reihenfolge der Parameter</translation>
    </message>
    <message>
        <source>what the program does not know of</source>
        <translation>was das Programm nicht kennt</translation>
    </message>
    <message>
        <source>none</source>
        <comment>value</comment>
        <translation>keiner</translation>
    </message>
    <message>
        <source>%1 (the same value)</source>
        <translation>%1 (derselbe Wert)</translation>
    </message>
    <message>
        <source>The names differ: %1 | %2.</source>
        <translation>Die Namen sind verschieden: %1 | %2.</translation>
    </message>
    <message>
        <source>Comments, attributes or something else beside the commands differ.</source>
        <translation>Kommentare, Attribute oder anderes neben den Befehlen sind verschieden.</translation>
    </message>
    <message>
        <source>Only the layout differs: white space, quotes, references or the encoding.</source>
        <translation>Nur die Form ist verschieden: Leerraum, Anführungszeichen, Zeichenverweise oder die Kodierung.</translation>
    </message>
    <message>
        <source>The macros are so unlike that there may be a shorter way to tell it.</source>
        <translation>Die Makros sind so verschieden, dass es sich vielleicht kürzer sagen ließe.</translation>
    </message>
    <message>
        <source>No difference: both hold the same bytes.</source>
        <translation>Kein Unterschied: beide enthalten dieselben Bytes.</translation>
    </message>
    <message>
        <source>%1 changed</source>
        <translation>%1 geändert</translation>
    </message>
    <message>
        <source>%1 only in %2</source>
        <translation>%1 nur in %2</translation>
    </message>
    <message>
        <source>%1 moved</source>
        <translation>%1 verschoben</translation>
    </message>
    <message>
        <source>%1 of the same meaning, written differently</source>
        <translation>%1 gleichbedeutend, anders geschrieben</translation>
    </message>
    <message>
        <source>%1 alike</source>
        <translation>%1 gleich</translation>
    </message>
    <message>
        <source>No commands in either.</source>
        <translation>Auf beiden Seiten keine Befehle.</translation>
    </message>
</context>
<context>
    <name>CompareWindow</name>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Voriger</translation>
    </message>
    <message>
        <source>To the difference before (F7)</source>
        <translation>Zum vorigen Unterschied (F7)</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Nächster</translation>
    </message>
    <message>
        <source>To the next difference (F8)</source>
        <translation>Zum nächsten Unterschied (F8)</translation>
    </message>
    <message>
        <source>&amp;Differences only</source>
        <translation>Nur &amp;Unterschiede</translation>
    </message>
    <message>
        <source>Leave out what is alike</source>
        <translation>Gleiches weglassen</translation>
    </message>
    <message>
        <source>Show Command Dest&amp;ination</source>
        <translation>Befehlsz&amp;iel zeigen</translation>
    </message>
    <message>
        <source>Show Ra&amp;w Command</source>
        <translation>Befehl im Roh&amp;format zeigen</translation>
    </message>
    <message>
        <source>Read &amp;Again</source>
        <translation>Neu &amp;lesen</translation>
    </message>
    <message>
        <source>Look again at what stands there now (F5)</source>
        <translation>Neu ansehen, was jetzt dort steht (F5)</translation>
    </message>
    <message>
        <source>Commands beside each other</source>
        <translation>Befehle nebeneinander</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>CreateCommandDialog</name>
    <message>
        <source>Where the command goes to</source>
        <translation>Ziel des Befehls festlegen</translation>
    </message>
    <message>
        <source>The workplace of the panel</source>
        <translation>Arbeitsplatz des Bedienpults festlegen</translation>
    </message>
    <message>
        <source>Show functions and values as they are stored</source>
        <translation>Funktionen und Werte so anzeigen, wie sie gespeichert sind</translation>
    </message>
    <message>
        <source>Offer the functions that change a value in steps</source>
        <translation>Funktionen anbieten, die einen Wert schrittweise ändern</translation>
    </message>
    <message>
        <source>Search text 1</source>
        <translation>Suchtext 1</translation>
    </message>
    <message>
        <source>Clear search 1</source>
        <translation>Suche 1 leeren</translation>
    </message>
    <message>
        <source>Found by search 1</source>
        <translation>Treffer der Suche 1</translation>
    </message>
    <message>
        <source>Search text 2</source>
        <translation>Suchtext 2</translation>
    </message>
    <message>
        <source>Clear search 2</source>
        <translation>Suche 2 leeren</translation>
    </message>
    <message>
        <source>Found by search 2</source>
        <translation>Treffer der Suche 2</translation>
    </message>
    <message>
        <source>Search text 3</source>
        <translation>Suchtext 3</translation>
    </message>
    <message>
        <source>Clear search 3</source>
        <translation>Suche 3 leeren</translation>
    </message>
    <message>
        <source>Found by search 3</source>
        <translation>Treffer der Suche 3</translation>
    </message>
    <message>
        <source>Search text 4</source>
        <translation>Suchtext 4</translation>
    </message>
    <message>
        <source>Clear search 4</source>
        <translation>Suche 4 leeren</translation>
    </message>
    <message>
        <source>Found by search 4</source>
        <translation>Treffer der Suche 4</translation>
    </message>
    <message>
        <source>Search text 5</source>
        <translation>Suchtext 5</translation>
    </message>
    <message>
        <source>Clear search 5</source>
        <translation>Suche 5 leeren</translation>
    </message>
    <message>
        <source>Found by search 5</source>
        <translation>Treffer der Suche 5</translation>
    </message>
    <message>
        <source>The functions that fit what is chosen</source>
        <translation>Funktionen, die zur Auswahl passen</translation>
    </message>
    <message>
        <source>Fetch the current value of the parameter from the panel</source>
        <translation>Aktuellen Wert des Parameters vom Bedienpult holen</translation>
    </message>
    <message>
        <source>Put the command in front of all others</source>
        <translation>Befehl vor allen anderen einfügen</translation>
    </message>
    <message>
        <source>Put the command in front of the selected one</source>
        <translation>Befehl vor dem ausgewählten einfügen</translation>
    </message>
    <message>
        <source>Put the command behind all others</source>
        <translation>Befehl hinter allen anderen einfügen</translation>
    </message>
    <message>
        <source>After an insertion go on here; the next command of the same button goes behind it</source>
        <translation>Nach dem Einfügen hier weitermachen; der nächste Befehl derselben Schaltfläche kommt dahinter</translation>
    </message>
    <message>
        <source>keep open</source>
        <translation>offen lassen</translation>
    </message>
    <message>
        <source>Words of the command</source>
        <translation>Wörter des Befehls</translation>
    </message>
    <message>
        <source>Alt+6: in words, as key 2 clip</source>
        <translation>Alt+6: in Wörtern, wie key 2 clip</translation>
    </message>
</context>
<context>
    <name>DataUpdate</name>
    <message>
        <source>The line to the panel is lost, so that no values come.
Connect anew, then update again.</source>
        <translation>Die Verbindung zum Bedienpult ist verloren, es kommen keine Werte.
Neu verbinden, dann erneut aktualisieren.</translation>
    </message>
</context>
<context>
    <name>EnterTextDialog</name>
    <message>
        <source>Enter Text</source>
        <translation>Text eingeben</translation>
    </message>
</context>
<context>
    <name>EnterTimecodeDialog</name>
    <message>
        <source>Hours</source>
        <translation>Stunden</translation>
    </message>
    <message>
        <source>Minutes</source>
        <translation>Minuten</translation>
    </message>
    <message>
        <source>Seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Frames</source>
        <translation>Bilder</translation>
    </message>
</context>
<context>
    <name>EnterValueDialog</name>
    <message>
        <source>Number, name and panel value</source>
        <translation>Nummer, Name und Wert am Bedienpult</translation>
    </message>
</context>
<context>
    <name>FailureText</name>
    <message>
        <source>the file or its folder is missing</source>
        <translation>die Datei oder ihr Ordner fehlt</translation>
    </message>
    <message>
        <source>something that is no file stands there</source>
        <translation>dort steht etwas, das keine Datei ist</translation>
    </message>
    <message>
        <source>it is not allowed here</source>
        <translation>das ist hier nicht erlaubt</translation>
    </message>
    <message>
        <source>the file is write-protected</source>
        <translation>die Datei ist schreibgeschützt</translation>
    </message>
    <message>
        <source>the disk cannot be written</source>
        <translation>der Datenträger ist nicht beschreibbar</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation>der Datenträger meldet einen Fehler</translation>
    </message>
    <message>
        <source>the file is too large</source>
        <translation>die Datei ist zu groß</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Arbeitsspeicher reicht nicht</translation>
    </message>
    <message>
        <source>it is done, but may not survive a power cut</source>
        <translation>es ist getan, übersteht aber vielleicht keinen Stromausfall</translation>
    </message>
    <message>
        <source>the file cannot be parsed</source>
        <translation>die Datei ist kein lesbares XML</translation>
    </message>
    <message>
        <source>saving would lose a part of the file: %1</source>
        <translation>Speichern würde einen Teil der Datei verlieren: %1</translation>
    </message>
    <message>
        <source>the file holds no macro</source>
        <translation>die Datei enthält kein Makro</translation>
    </message>
    <message>
        <source>there is no such command</source>
        <translation>diesen Befehl gibt es nicht</translation>
    </message>
    <message>
        <source>the file&apos;s encoding cannot hold a text: %1</source>
        <translation>die Kodierung der Datei kann einen Text nicht aufnehmen: %1</translation>
    </message>
    <message>
        <source>no command takes the value</source>
        <translation>kein Befehl nimmt den Wert an</translation>
    </message>
    <message>
        <source>it has changed meanwhile</source>
        <translation>es hat sich inzwischen geändert</translation>
    </message>
    <message>
        <source>what is to be taken over %1</source>
        <translation>was übernommen werden soll, taugt nicht: %1</translation>
    </message>
    <message>
        <source>another program is changing it</source>
        <translation>ein anderes Programm ändert es gerade</translation>
    </message>
    <message>
        <source>the panel: %1</source>
        <translation>das Bedienpult: %1</translation>
    </message>
    <message>
        <source>it was cancelled</source>
        <translation>es wurde abgebrochen</translation>
    </message>
    <message>
        <source>the snapshot: %1</source>
        <translation>der Abzug: %1</translation>
    </message>
    <message>
        <source>it was cancelled, but the disk may do it yet</source>
        <translation>es wurde abgebrochen, aber die Festplatte kann es noch tun</translation>
    </message>
</context>
<context>
    <name>FindingText</name>
    <message>
        <source>the file cannot be read, or holds no macro</source>
        <translation>die Datei lässt sich nicht lesen oder enthält kein Makro</translation>
    </message>
    <message>
        <source>the file&apos;s encoding cannot hold its text</source>
        <translation>die Kodierung der Datei kann ihren Text nicht fassen</translation>
    </message>
    <message>
        <source>the macro has no name</source>
        <translation>das Makro hat keinen Namen</translation>
    </message>
    <message>
        <source>another macro of the workplace has the same name</source>
        <translation>ein anderes Makro des Arbeitsplatzes hat denselben Namen</translation>
    </message>
    <message>
        <source>the file is not named by a number, as macro007.mac</source>
        <translation>die Datei ist nicht nach einer Nummer benannt wie macro007.mac</translation>
    </message>
    <message>
        <source>there are no commands</source>
        <translation>es gibt keine Befehle</translation>
    </message>
    <message>
        <source>the destination is unknown or missing</source>
        <translation>das Ziel ist unbekannt oder fehlt</translation>
    </message>
    <message>
        <source>a command for the panel has no workplace 1 to 8</source>
        <translation>ein Befehl für das Bedienpult hat keinen Arbeitsplatz 1 bis 8</translation>
    </message>
    <message>
        <source>no interface description has the function</source>
        <translation>keine Schnittstellenbeschreibung kennt die Funktion</translation>
    </message>
    <message>
        <source>the function has no such parameter</source>
        <translation>die Funktion hat keinen solchen Parameter</translation>
    </message>
    <message>
        <source>a parameter stands there twice</source>
        <translation>ein Parameter steht doppelt da</translation>
    </message>
    <message>
        <source>a parameter that must have a value has none</source>
        <translation>ein Pflichtparameter hat keinen Wert</translation>
    </message>
    <message>
        <source>a value does not read whole as a number</source>
        <translation>ein Wert ist nicht als Ganzes eine Zahl</translation>
    </message>
    <message>
        <source>a value lies beyond its limits</source>
        <translation>ein Wert liegt außerhalb seiner Grenzen</translation>
    </message>
    <message>
        <source>a value is none of those that are listed</source>
        <translation>ein Wert ist keiner der aufgeführten</translation>
    </message>
    <message>
        <source>the site has no such source</source>
        <translation>der Standort hat keine solche Quelle</translation>
    </message>
    <message>
        <source>a value is no timecode at the site&apos;s frame rate</source>
        <translation>ein Wert ist bei der Bildrate des Standorts kein Timecode</translation>
    </message>
    <message>
        <source>the text of a classic command does not decode</source>
        <translation>der Text eines klassischen Befehls lässt sich nicht entschlüsseln</translation>
    </message>
    <message>
        <source>a classic command could not be read back once it is saved</source>
        <translation>ein klassischer Befehl ließe sich nach dem Speichern nicht wieder lesen</translation>
    </message>
    <message>
        <source>the action of a classic command is unknown</source>
        <translation>die Aktion eines klassischen Befehls ist unbekannt</translation>
    </message>
    <message>
        <source>no decoding list tells what a classic command means</source>
        <translation>keine Dekodierliste sagt, was ein klassischer Befehl bedeutet</translation>
    </message>
    <message>
        <source>the keyword of a classic command is unknown</source>
        <translation>das Schlüsselwort eines klassischen Befehls ist unbekannt</translation>
    </message>
    <message>
        <source>a classic command has too few parameters</source>
        <translation>ein klassischer Befehl hat zu wenige Parameter</translation>
    </message>
    <message>
        <source>an update would put the value into another command</source>
        <translation>eine Aktualisierung setzte den Wert in einen anderen Befehl ein</translation>
    </message>
    <message>
        <source>the same command stands there twice in a row</source>
        <translation>derselbe Befehl steht zweimal hintereinander da</translation>
    </message>
    <message>
        <source>a value is set again before anything acts</source>
        <translation>ein Wert wird neu gesetzt, bevor etwas wirkt</translation>
    </message>
    <message>
        <source>note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: %2; right: %3</source>
        <translation>%1: %2; richtig: %3</translation>
    </message>
    <message numerus="yes">
        <source>%n errors</source>
        <translation>
            <numerusform>%n Fehler</numerusform>
            <numerusform>%n Fehler</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n warnings</source>
        <translation>
            <numerusform>%n Warnung</numerusform>
            <numerusform>%n Warnungen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n Hinweis</numerusform>
            <numerusform>%n Hinweise</numerusform>
        </translation>
    </message>
    <message>
        <source>the destination is missing</source>
        <translation>das Ziel fehlt</translation>
    </message>
    <message>
        <source>the destination &quot;%1&quot; is unknown</source>
        <translation>das Ziel „%1“ ist unbekannt</translation>
    </message>
    <message>
        <source>the workplace is missing</source>
        <translation>der Arbeitsplatz fehlt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no workplace</source>
        <translation>„%1“ ist kein Arbeitsplatz</translation>
    </message>
    <message>
        <source>no function is called &quot;%1&quot;</source>
        <translation>keine Funktion heißt „%1“</translation>
    </message>
    <message>
        <source>the function has no parameter &quot;%1&quot;</source>
        <translation>die Funktion hat keinen Parameter „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands there twice</source>
        <translation>„%1“ steht zweimal da</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing</source>
        <translation>„%1“ fehlt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no value</source>
        <translation>„%1“ hat keinen Wert</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number</source>
        <translation>„%1“ ist keine Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is beyond the limits</source>
        <translation>„%1“ liegt außerhalb der Grenzen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of the values</source>
        <translation>„%1“ ist keiner der Werte</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no source of the site</source>
        <translation>„%1“ ist keine Quelle der Anlage</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no timecode</source>
        <translation>„%1“ ist kein Timecode</translation>
    </message>
    <message>
        <source>an update would put its value into command %1</source>
        <translation>eine Aktualisierung würde ihren Wert in Befehl %1 schreiben</translation>
    </message>
    <message>
        <source>the same command as %1</source>
        <translation>derselbe Befehl wie %1</translation>
    </message>
    <message>
        <source>it is set again before anything acts, by command %1</source>
        <translation>er wird wieder gesetzt, bevor etwas wirkt, durch Befehl %1</translation>
    </message>
    <message>
        <source>there is no macro with data in the file</source>
        <translation>in der Datei ist kein Makro mit Daten</translation>
    </message>
    <message>
        <source>the file says UTF-8, but its bytes are none</source>
        <translation>die Datei nennt UTF-8, ihre Bytes sind aber keines</translation>
    </message>
    <message>
        <source>the file has bytes that are no character of Windows-1252</source>
        <translation>die Datei hat Bytes, die kein Zeichen von Windows-1252 sind</translation>
    </message>
    <message>
        <source>the file says %1, of which only ASCII is understood</source>
        <translation>die Datei nennt %1, wovon nur ASCII verstanden wird</translation>
    </message>
    <message>
        <source>the file is not named by its number</source>
        <translation>die Datei heißt nicht nach ihrer Nummer</translation>
    </message>
    <message>
        <source>%1 has the same name</source>
        <translation>%1 hat denselben Namen</translation>
    </message>
    <message>
        <source>there is no command text</source>
        <translation>es gibt keinen Befehlstext</translation>
    </message>
    <message>
        <source>the text does not decode</source>
        <translation>der Text lässt sich nicht entschlüsseln</translation>
    </message>
    <message>
        <source>%1 parameter bytes would not be read back after a save</source>
        <translation>%1 Parameterbytes würden nach dem Speichern nicht zurückgelesen</translation>
    </message>
    <message>
        <source>the action %1 is unknown</source>
        <translation>die Aktion %1 ist unbekannt</translation>
    </message>
    <message>
        <source>there is no decoding list for cd %1, co %2</source>
        <translation>es gibt keine Dekodierliste für cd %1, co %2</translation>
    </message>
    <message>
        <source>%1 has no entry in the decoding list</source>
        <translation>%1 hat keinen Eintrag in der Dekodierliste</translation>
    </message>
    <message>
        <source>%1 is beyond the limits</source>
        <translation>%1 liegt außerhalb der Grenzen</translation>
    </message>
    <message>
        <source>%1 is no source</source>
        <translation>%1 ist keine Quelle</translation>
    </message>
    <message>
        <source>%1 is no timecode of a clock with %2 frames a second</source>
        <translation>%1 ist kein Timecode einer Uhr mit %2 Bildern je Sekunde</translation>
    </message>
    <message>
        <source>the bytes end before %1</source>
        <translation>die Bytes enden vor %1</translation>
    </message>
    <message>
        <source>the bytes end before the last parameter</source>
        <translation>die Bytes enden vor dem letzten Parameter</translation>
    </message>
    <message>
        <source>the keyword %1 is in no decoding list</source>
        <translation>das Schlüsselwort %1 steht in keiner Dekodierliste</translation>
    </message>
    <message>
        <source>QMF1 to QMF4, or PANEL</source>
        <translation>QMF1 bis QMF4, oder PANEL</translation>
    </message>
    <message>
        <source>1 to 8</source>
        <translation>1 bis 8</translation>
    </message>
    <message>
        <source>once</source>
        <translation>einmal</translation>
    </message>
    <message>
        <source>a value: the parameter is not optional</source>
        <translation>ein Wert: der Parameter ist nicht wahlfrei</translation>
    </message>
    <message>
        <source>a parameter with a value</source>
        <translation>ein Parameter mit einem Wert</translation>
    </message>
    <message>
        <source>one of the two</source>
        <translation>einer von beiden</translation>
    </message>
    <message>
        <source>UTF-8 or Windows-1252</source>
        <translation>UTF-8 oder Windows-1252</translation>
    </message>
    <message>
        <source>an input of the site, such as %1</source>
        <translation>ein Eingang der Anlage, wie %1</translation>
    </message>
    <message>
        <source>one of %1</source>
        <translation>einer von %1</translation>
    </message>
    <message>
        <source>one of %1 ...</source>
        <translation>einer von %1 ...</translation>
    </message>
    <message>
        <source>a whole number, %1</source>
        <translation>eine ganze Zahl, %1</translation>
    </message>
    <message>
        <source>a number, %1</source>
        <translation>eine Zahl, %1</translation>
    </message>
    <message>
        <source>a packed timecode of a clock</source>
        <translation>ein gepackter Timecode einer Uhr</translation>
    </message>
    <message>
        <source>a packed timecode of a clock with %1 frames a second</source>
        <translation>ein gepackter Timecode einer Uhr mit %1 Bildern je Sekunde</translation>
    </message>
    <message>
        <source>27 at the most</source>
        <translation>höchstens 27</translation>
    </message>
    <message>
        <source>min: %1   max: %2</source>
        <translation>min: %1   max: %2</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>the byte &quot;%1&quot; is not written in the digits 0 to 9 and a to f</source>
        <translation>das Byte „%1“ ist nicht in den Ziffern 0 bis 9 und a bis f geschrieben</translation>
    </message>
</context>
<context>
    <name>FirstStart</name>
    <message>
        <source>Open a Site</source>
        <translation>Anlagendaten öffnen</translation>
    </message>
    <message>
        <source>There is no site in this folder.</source>
        <translation>In diesem Ordner liegen keine Anlagendaten.</translation>
    </message>
</context>
<context>
    <name>FirstStartDialog</name>
    <message>
        <source>Tessaly: First Start</source>
        <translation>Tessaly: Erster Start</translation>
    </message>
    <message>
        <source>There is no site here yet</source>
        <translation>Hier sind noch keine Anlagendaten</translation>
    </message>
    <message>
        <source>A site holds the descriptions of the panel&apos;s functions, the applications and their macros. This folder holds none of them. Nothing has been written to it.</source>
        <translation>Zu den Anlagendaten gehören die Beschreibungen der Pultfunktionen, die Applikationen und ihre Makros. Dieser Ordner enthält nichts davon. Es wurde nichts hineingeschrieben.</translation>
    </message>
    <message>
        <source>Set up the &amp;sample site here</source>
        <translation>&amp;Beispieldaten hier einrichten</translation>
    </message>
    <message>
        <source>Three applications with their macros, to try things out and to learn.</source>
        <translation>Drei Applikationen mit ihren Makros, zum Ausprobieren und Lernen.</translation>
    </message>
    <message>
        <source>Use the site of an &amp;existing installation</source>
        <translation>Anlagendaten einer &amp;vorhandenen Installation verwenden</translation>
    </message>
    <message>
        <source>folder of the installation</source>
        <translation>Ordner der Installation</translation>
    </message>
    <message>
        <source>Folder of the installation</source>
        <translation>Ordner der Installation</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>Start e&amp;mpty</source>
        <translation>&amp;Leer starten</translation>
    </message>
    <message>
        <source>The lists stay empty until there are files for them.</source>
        <translation>Die Listen bleiben leer, bis Dateien dafür vorhanden sind.</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>B&amp;eenden</translation>
    </message>
</context>
<context>
    <name>GuideWindow</name>
    <message>
        <source>Guide</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>The page before (Alt+Left)</source>
        <translation>Die Seite davor (Alt+Links)</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>The page that you came back from (Alt+Right)</source>
        <translation>Die Seite, von der Sie zurückkamen (Alt+Rechts)</translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <translation>&amp;Inhalt</translation>
    </message>
    <message>
        <source>The beginning of the user guide</source>
        <translation>Der Anfang des Handbuchs</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Tasten</translation>
    </message>
    <message>
        <source>All keys of all windows</source>
        <translation>Alle Tasten aller Fenster</translation>
    </message>
    <message>
        <source>find in this page (Ctrl+F)</source>
        <translation>auf dieser Seite finden (Strg+F)</translation>
    </message>
    <message>
        <source>Find in this page</source>
        <translation>Auf dieser Seite finden</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Nächste</translation>
    </message>
    <message>
        <source>The next place (F3)</source>
        <translation>Die nächste Stelle (F3)</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Vorige</translation>
    </message>
    <message>
        <source>The place before (Shift+F3)</source>
        <translation>Die Stelle davor (Umschalt+F3)</translation>
    </message>
    <message>
        <source>Page of the guide</source>
        <translation>Seite des Handbuchs</translation>
    </message>
</context>
<context>
    <name>HistoryDialog</name>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>&amp;Filter:</source>
        <translation>&amp;Filter:</translation>
    </message>
    <message>
        <source>part of a name, a place or a time</source>
        <translation>Teil eines Namens, eines Orts oder einer Zeit</translation>
    </message>
    <message>
        <source>Kept macros</source>
        <translation>Aufbewahrte Makros</translation>
    </message>
    <message>
        <source>Commands of the chosen macro</source>
        <translation>Befehle des ausgewählten Makros</translation>
    </message>
    <message>
        <source>&amp;Put Back</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Write the chosen macro to where it came from; what is there now is kept first</source>
        <translation>Ausgewähltes Makro dorthin schreiben, woher es kam; was jetzt dort liegt, wird zuvor aufbewahrt</translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation>&amp;Speichern unter...</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>&amp;Compare...</source>
        <translation>&amp;Vergleichen...</translation>
    </message>
    <message>
        <source>Close the history and set the chosen macro beside that of a pane</source>
        <translation>Den Verlauf schließen und das gewählte Makro neben das einer Seite stellen</translation>
    </message>
</context>
<context>
    <name>HitRows</name>
    <message numerus="yes">
        <source>%n commands</source>
        <translation>
            <numerusform>%n Befehl</numerusform>
            <numerusform>%n Befehle</numerusform>
        </translation>
    </message>
    <message>
        <source>could not be read: %1</source>
        <translation>nicht lesbar: %1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (%2): %3</source>
        <translation>%1 (%2): %3</translation>
    </message>
</context>
<context>
    <name>KeyboardWay</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>MacroTransfers</name>
    <message>
        <source>Fetching macro %1 from the panel</source>
        <translation>Makro %1 wird vom Bedienpult geholt</translation>
    </message>
    <message>
        <source>Sending macro %1 to the panel</source>
        <translation>Makro %1 wird an das Bedienpult gesendet</translation>
    </message>
    <message>
        <source>Deleting macro %1 on the panel</source>
        <translation>Makro %1 wird auf dem Bedienpult gelöscht</translation>
    </message>
    <message>
        <source>Looking at macro %1 on the panel</source>
        <translation>Makro %1 auf dem Bedienpult wird angesehen</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Close Tessaly; asks about unsaved changes</source>
        <translation>Tessaly schließen; bei ungespeicherten Änderungen wird nachgefragt</translation>
    </message>
</context>
<context>
    <name>Message</name>
    <message>
        <source>Done</source>
        <translation>Erledigt</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Failure</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>MessagesDialog</name>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>&amp;Messages of this run, the newest on top:</source>
        <translation>&amp;Meldungen dieses Laufs, die neueste oben:</translation>
    </message>
    <message>
        <source>Messages of this run</source>
        <translation>Meldungen dieses Laufs</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>K&amp;opieren</translation>
    </message>
    <message>
        <source>Copy the selected messages (Ctrl+C)</source>
        <translation>Die gewählten Meldungen kopieren (Strg+C)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
</context>
<context>
    <name>ModifyCommandDialog</name>
    <message>
        <source>Show functions and values as they are stored</source>
        <translation>Funktionen und Werte so anzeigen, wie sie gespeichert sind</translation>
    </message>
    <message>
        <source>Part 1 of the function</source>
        <translation>Teil 1 der Funktion</translation>
    </message>
    <message>
        <source>Part 2 of the function</source>
        <translation>Teil 2 der Funktion</translation>
    </message>
    <message>
        <source>Part 3 of the function</source>
        <translation>Teil 3 der Funktion</translation>
    </message>
    <message>
        <source>Part 4 of the function</source>
        <translation>Teil 4 der Funktion</translation>
    </message>
    <message>
        <source>Part 5 of the function</source>
        <translation>Teil 5 der Funktion</translation>
    </message>
    <message>
        <source>Go back to the command as it was</source>
        <translation>Zum ursprünglichen Befehl zurückkehren</translation>
    </message>
    <message>
        <source>Put the changed command in the place of the old one</source>
        <translation>Alten Befehl durch den geänderten ersetzen</translation>
    </message>
</context>
<context>
    <name>MultipleCommandsDialog</name>
    <message>
        <source>Select all commands of the list (Ctrl+A)</source>
        <translation>Alle Befehle der Liste auswählen (Strg+A)</translation>
    </message>
    <message>
        <source>Select none of them</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message>
        <source>Take the selected commands off the list (Del)</source>
        <translation>Ausgewählte Befehle aus der Liste nehmen (Entf)</translation>
    </message>
    <message>
        <source>Fetch the current values from the panel</source>
        <translation>Aktuelle Werte vom Bedienpult holen</translation>
    </message>
    <message>
        <source>Show the commands as they are stored</source>
        <translation>Befehle so anzeigen, wie sie gespeichert sind</translation>
    </message>
    <message>
        <source>Show names and values in columns</source>
        <translation>Namen und Werte in Spalten anzeigen</translation>
    </message>
    <message>
        <source>Where the commands go to</source>
        <translation>Ziel der Befehle festlegen</translation>
    </message>
    <message>
        <source>Put the commands in front of all others</source>
        <translation>Befehle vor allen anderen einfügen</translation>
    </message>
    <message>
        <source>Put the commands in front of the command that is selected in the macro</source>
        <translation>Befehle vor dem Befehl einfügen, der im Makro ausgewählt ist</translation>
    </message>
    <message>
        <source>Put the commands behind all others</source>
        <translation>Befehle hinter allen anderen einfügen</translation>
    </message>
</context>
<context>
    <name>NextSteps</name>
    <message>
        <source>enter the address of the panel above, and connect</source>
        <translation>oben die Adresse des Bedienpults eingeben und verbinden</translation>
    </message>
    <message>
        <source>enter the folder of the applications above</source>
        <translation>oben den Ordner der Applikationen eingeben</translation>
    </message>
    <message>
        <source>choose another application</source>
        <translation>andere Applikation auswählen</translation>
    </message>
    <message>
        <source>choose an application</source>
        <translation>Applikation auswählen</translation>
    </message>
    <message>
        <source>wait until the panel tells its workplaces</source>
        <translation>warten, bis das Bedienpult seine Arbeitsplätze meldet</translation>
    </message>
    <message>
        <source>connect to the panel</source>
        <translation>mit dem Bedienpult verbinden</translation>
    </message>
    <message>
        <source>choose a macro</source>
        <translation>Makro auswählen</translation>
    </message>
    <message>
        <source>choose another control panel</source>
        <translation>anderes Bedienpult auswählen</translation>
    </message>
    <message>
        <source>choose a control panel</source>
        <translation>Bedienpult auswählen</translation>
    </message>
    <message>
        <source>choose a workplace</source>
        <translation>Arbeitsplatz auswählen</translation>
    </message>
    <message>
        <source>choose another workplace</source>
        <translation>anderen Arbeitsplatz auswählen</translation>
    </message>
    <message>
        <source>create a macro, or copy one from the other pane</source>
        <translation>Makro anlegen oder aus dem anderen Bereich kopieren</translation>
    </message>
    <message>
        <source>build a command with the buttons below, or paste or drop commands here</source>
        <translation>mit den Knöpfen unten einen Befehl bauen oder Befehle hier einfügen oder ablegen</translation>
    </message>
    <message>
        <source>choose another macro</source>
        <translation>anderes Makro auswählen</translation>
    </message>
</context>
<context>
    <name>OpenMacros</name>
    <message>
        <source>Co&amp;mpare</source>
        <translation>&amp;Vergleichen</translation>
    </message>
</context>
<context>
    <name>Overwriting</name>
    <message>
        <source>%1 of workplace %2 on the panel %3</source>
        <translation>%1 des Arbeitsplatzes %2 auf dem Pult %3</translation>
    </message>
    <message numerus="yes">
        <source>%1 in %2: %n commands</source>
        <translation>
            <numerusform>%1 in %2: %n Befehl</numerusform>
            <numerusform>%1 in %2: %n Befehle</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 in %2: it cannot be read</source>
        <translation>%1 in %2: nicht lesbar</translation>
    </message>
    <message>
        <source>The history could not keep what stands at %1, so that it cannot be put back:
%2.

Overwrite it all the same?</source>
        <translation>Der Verlauf konnte nicht aufbewahren, was auf %1 steht; es lässt sich nicht zurückholen:
%2.

Trotzdem überschreiben?</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>%1 wird geschrieben</translation>
    </message>
</context>
<context>
    <name>PaneKeys</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>PaneSubject</name>
    <message>
        <source>%1, workplace %2</source>
        <translation>%1, Arbeitsplatz %2</translation>
    </message>
    <message>
        <source>%1, of %2</source>
        <translation>%1, von %2</translation>
    </message>
    <message>
        <source>No macro is open</source>
        <translation>Kein Makro ist geöffnet</translation>
    </message>
    <message>
        <source>unsaved changes</source>
        <translation>ungespeichert</translation>
    </message>
    <message>
        <source>NOT saved</source>
        <translation>NICHT gespeichert</translation>
    </message>
    <message>
        <source>last change: %1</source>
        <translation>letzte Änderung: %1</translation>
    </message>
    <message>
        <source>On the disk</source>
        <translation>Auf der Platte</translation>
    </message>
    <message>
        <source>On the panel</source>
        <translation>Auf dem Pult</translation>
    </message>
    <message>
        <source>Line lost</source>
        <translation>Verbindung verloren</translation>
    </message>
    <message>
        <source>Panel, not connected</source>
        <translation>Pult, nicht verbunden</translation>
    </message>
    <message>
        <source>In a snapshot</source>
        <translation>In einem Schnappschuss</translation>
    </message>
    <message>
        <source>Key file</source>
        <translation>Tastendatei</translation>
    </message>
    <message>
        <source>Out of the history</source>
        <translation>Aus dem Verlauf</translation>
    </message>
    <message>
        <source>Without a place</source>
        <translation>Ohne Platz</translation>
    </message>
</context>
<context>
    <name>ParameterPanel</name>
    <message>
        <source>Values to choose from</source>
        <translation>Werte zur Auswahl</translation>
    </message>
</context>
<context>
    <name>PlaceText</name>
    <message>
        <source>workplace %1 on %2</source>
        <translation>Arbeitsplatz %1 auf %2</translation>
    </message>
    <message>
        <source>%1, key files</source>
        <translation>%1, Tastendateien</translation>
    </message>
    <message>
        <source>%1, workplace %2</source>
        <translation>%1, Arbeitsplatz %2</translation>
    </message>
    <message>
        <source>pane %1</source>
        <translation>Bereich %1</translation>
    </message>
    <message>
        <source>pane %1, %2 of %3</source>
        <translation>Bereich %1, %2 von %3</translation>
    </message>
</context>
<context>
    <name>RecoveryDialog</name>
    <message>
        <source>Unsaved Changes</source>
        <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>The program ended with changes that were not saved. What is to become of them?</source>
        <translation>Das Programm endete mit ungespeicherten Änderungen. Was soll damit geschehen?</translation>
    </message>
    <message>
        <source>Take up again</source>
        <translation>Weiterbearbeiten</translation>
    </message>
    <message>
        <source>Leave it</source>
        <translation>Liegen lassen</translation>
    </message>
    <message>
        <source>The changes stay in the history, from which they can be put back</source>
        <translation>Die Änderungen bleiben im Verlauf und können von dort wiederhergestellt werden</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Ask Again Next Time</source>
        <translation>Nächstes Mal wieder fragen</translation>
    </message>
</context>
<context>
    <name>RehearseTexts</name>
    <message>
        <source>the function is not in the dictionary</source>
        <translation>die Funktion steht nicht im Wörterbuch</translation>
    </message>
    <message>
        <source>its destination is unknown</source>
        <translation>sein Ziel ist unbekannt</translation>
    </message>
    <message>
        <source>the panel tells no value that it steps</source>
        <translation>das Pult nennt keinen Wert, den er verstellt</translation>
    </message>
    <message>
        <source>its value is missing</source>
        <translation>sein Wert fehlt</translation>
    </message>
    <message>
        <source>its step is no number</source>
        <translation>sein Schritt ist keine Zahl</translation>
    </message>
    <message>
        <source>its value was no number before</source>
        <translation>sein Wert war zuvor keine Zahl</translation>
    </message>
    <message>
        <source>its value was none of its list before</source>
        <translation>sein Wert war zuvor keiner seiner Liste</translation>
    </message>
    <message>
        <source>its text does not decode</source>
        <translation>sein Text lässt sich nicht entschlüsseln</translation>
    </message>
    <message>
        <source>its action is unknown</source>
        <translation>seine Aktion ist unbekannt</translation>
    </message>
    <message>
        <source>its last parameter holds no step</source>
        <translation>sein letzter Parameter hat keinen Schritt</translation>
    </message>
    <message>
        <source>its decoding list knows the step, not what it leads to</source>
        <translation>seine Dekodierliste kennt den Schritt, nicht wohin er führt</translation>
    </message>
    <message>
        <source>its bytes end before the last parameter</source>
        <translation>seine Bytes enden vor dem letzten Parameter</translation>
    </message>
    <message>
        <source>it gives no value</source>
        <translation>er nennt keinen Wert</translation>
    </message>
    <message>
        <source>it has no step</source>
        <translation>er hat keinen Schritt</translation>
    </message>
    <message>
        <source>the function has no parameter </source>
        <translation>die Funktion hat keinen Parameter </translation>
    </message>
    <message>
        <source>no value tells </source>
        <translation>kein Wert nennt </translation>
    </message>
    <message>
        <source>there is no decoding list for </source>
        <translation>es gibt keine Dekodierliste für </translation>
    </message>
    <message>
        <source>its decoding list has no entry for keyword </source>
        <translation>seine Dekodierliste hat keinen Eintrag für das Schlüsselwort </translation>
    </message>
    <message>
        <source>changed by this command</source>
        <translation>von diesem Befehl geändert</translation>
    </message>
    <message>
        <source>was so already</source>
        <translation>war schon so</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>known only by how much it has changed</source>
        <translation>nur bekannt, um wie viel es sich geändert hat</translation>
    </message>
    <message>
        <source>not as the panel has it now</source>
        <translation>nicht so, wie das Pult es jetzt hat</translation>
    </message>
    <message>
        <source>as the panel has it now</source>
        <translation>so, wie das Pult es jetzt hat</translation>
    </message>
    <message>
        <source>changed by %1</source>
        <translation>geändert um %1</translation>
    </message>
    <message>
        <source>The values are what the panel has now, as far as they have come.</source>
        <translation>Die Werte sind, was das Pult jetzt hat, soweit sie gekommen sind.</translation>
    </message>
    <message>
        <source>Nothing is known of the values.</source>
        <translation>Von den Werten ist nichts bekannt.</translation>
    </message>
    <message>
        <source>%1 is %2 already</source>
        <translation>%1 ist schon %2</translation>
    </message>
    <message>
        <source>%1: %2 → %3</source>
        <translation>%1: %2 → %3</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weiterer</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>acts, and changes no value that could be asked for</source>
        <translation>wirkt, und ändert keinen Wert, der erfragt werden könnte</translation>
    </message>
    <message>
        <source>what it does cannot be told: %1</source>
        <translation>was er bewirkt, lässt sich nicht sagen: %1</translation>
    </message>
    <message>
        <source>No panel is connected: what the values are now is not known.</source>
        <translation>Kein Pult ist verbunden: die jetzigen Werte sind nicht bekannt.</translation>
    </message>
    <message>
        <source>The panel is gone: what the values are now is no longer known.</source>
        <translation>Das Pult ist fort: die jetzigen Werte sind nicht mehr bekannt.</translation>
    </message>
    <message>
        <source>Asking %1: %2 of %3 values have come...</source>
        <translation>Frage %1: %2 von %3 Werten sind gekommen...</translation>
    </message>
    <message>
        <source>%1 has told %2 of %3 values, the others have not come: they can be asked for again.</source>
        <translation>%1 hat %2 von %3 Werten genannt, die anderen sind nicht gekommen: sie können erneut erfragt werden.</translation>
    </message>
    <message>
        <source>%1 tells none of these values.</source>
        <translation>%1 nennt keinen dieser Werte.</translation>
    </message>
    <message>
        <source>After this macro: %1 not as now (≠), %2 as now.</source>
        <translation>Nach diesem Makro: %1 nicht wie jetzt (≠), %2 wie jetzt.</translation>
    </message>
    <message numerus="yes">
        <source>%1 has told all %n values.</source>
        <translation>
            <numerusform>%1 hat den %n Wert gemeldet.</numerusform>
            <numerusform>%1 hat alle %n Werte gemeldet.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RehearseWindow</name>
    <message>
        <source>&amp;Previous Change</source>
        <translation>&amp;Vorige Änderung</translation>
    </message>
    <message>
        <source>To the step before that changes something (F7)</source>
        <translation>Zum vorigen Schritt, der etwas ändert (F7)</translation>
    </message>
    <message>
        <source>&amp;Next Change</source>
        <translation>&amp;Nächste Änderung</translation>
    </message>
    <message>
        <source>To the next step that changes something (F8)</source>
        <translation>Zum nächsten Schritt, der etwas ändert (F8)</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>The step: Left and Right, Page Up and Page Down, Home and End</source>
        <translation>Der Schritt: Links und Rechts, Bild auf und Bild ab, Pos1 und Ende</translation>
    </message>
    <message>
        <source>&amp;Step by Step</source>
        <translation>&amp;Schritt für Schritt</translation>
    </message>
    <message>
        <source>&amp;After This Macro</source>
        <translation>N&amp;ach diesem Makro</translation>
    </message>
    <message>
        <source>After this macro</source>
        <translation>Nach diesem Makro</translation>
    </message>
    <message>
        <source>● changed   = so already   ? unknown   ± changed from an unknown value   ≠ not as now</source>
        <translation>● geändert   = schon so   ? unbekannt   ± von einem unbekannten Wert aus geändert   ≠ nicht wie jetzt</translation>
    </message>
    <message>
        <source>Start from what the panel has n&amp;ow</source>
        <translation>V&amp;on den jetzigen Werten des Pults ausgehen</translation>
    </message>
    <message>
        <source>Otherwise nothing is known of the values before the first command</source>
        <translation>Sonst ist vor dem ersten Befehl nichts von den Werten bekannt</translation>
    </message>
    <message>
        <source>Ask A&amp;gain</source>
        <translation>Erneut fra&amp;gen</translation>
    </message>
    <message>
        <source>Ask the panel again for what has not come (F5)</source>
        <translation>Das Pult noch einmal nach dem fragen, was nicht gekommen ist (F5)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>ReplaceWindow</name>
    <message>
        <source>&amp;What:</source>
        <translation>&amp;Was:</translation>
    </message>
    <message>
        <source>&amp;Parameter:</source>
        <translation>&amp;Parameter:</translation>
    </message>
    <message>
        <source>any</source>
        <translation>beliebig</translation>
    </message>
    <message>
        <source>&amp;From:</source>
        <translation>V&amp;on:</translation>
    </message>
    <message>
        <source>ME1, QMF1, 5</source>
        <translation>ME1, QMF1, 5</translation>
    </message>
    <message>
        <source>&amp;To:</source>
        <translation>&amp;Nach:</translation>
    </message>
    <message>
        <source>ME2, QMF2, 7</source>
        <translation>ME2, QMF2, 7</translation>
    </message>
    <message>
        <source>W&amp;here:</source>
        <translation>&amp;Wo:</translation>
    </message>
    <message>
        <source>everywhere; or a query, such as function:ME1.*</source>
        <translation>überall; oder eine Suche wie function:ME1.*</translation>
    </message>
    <message>
        <source>&amp;Rule:</source>
        <translation>&amp;Regel:</translation>
    </message>
    <message>
        <source>segment:ME1-&gt;ME2 where source:5; the fields above put it together</source>
        <translation>segment:ME1-&gt;ME2 where source:5; die Felder darüber setzen sie zusammen</translation>
    </message>
    <message>
        <source>Pre&amp;view</source>
        <translation>&amp;Vorschau</translation>
    </message>
    <message>
        <source>Look anew at what would be changed (F5)</source>
        <translation>Neu ansehen, was geändert würde (F5)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>End what is under way</source>
        <translation>Beenden, was gerade läuft</translation>
    </message>
    <message>
        <source>&amp;Look at:</source>
        <translation>&amp;Ansehen:</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Änderungen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>R&amp;eplace</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message>
        <source>Write what is ticked, in all macros or in none</source>
        <translation>Schreiben, was angehakt ist, in allen Makros oder in keinem</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>RootClaim</name>
    <message>
        <source>Nobody can tell who it is.</source>
        <translation>Wer es ist, lässt sich nicht sagen.</translation>
    </message>
    <message>
        <source>It runs on %1, process %2, since %3.</source>
        <translation>Es läuft auf %1, Prozess %2, seit %3.</translation>
    </message>
    <message>
        <source>%1 runs it on %2, process %3, since %4.</source>
        <translation>%1 betreibt es auf %2, Prozess %3, seit %4.</translation>
    </message>
    <message>
        <source>Another Tessaly works with the site in %1.</source>
        <translation>Ein anderes Tessaly arbeitet mit den Anlagendaten in %1.</translation>
    </message>
    <message>
        <source>The lock of the site in %1 cannot be read.</source>
        <translation>Die Sperre der Anlagendaten in %1 ist nicht lesbar.</translation>
    </message>
    <message>
        <source>Another Tessaly may work with it.</source>
        <translation>Vielleicht arbeitet ein anderes Tessaly damit.</translation>
    </message>
    <message>
        <source>If it is gone, or yours is the one that counts, take over. Two programs on one site do not spoil a file, but the later save wins.</source>
        <translation>Ist es nicht mehr da oder zählt Ihres, dann übernehmen Sie. Zwei Programme auf denselben Anlagendaten verderben keine Datei, aber das spätere Speichern gewinnt.</translation>
    </message>
    <message>
        <source>&amp;Take Over</source>
        <translation>Ü&amp;bernehmen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>B&amp;eenden</translation>
    </message>
</context>
<context>
    <name>SavePlaces</name>
    <message>
        <source>In %1...</source>
        <translation>In %1...</translation>
    </message>
    <message>
        <source>In a File...</source>
        <translation>In eine Datei...</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Macros (*.mac)</source>
        <translation>Makros (*.mac)</translation>
    </message>
</context>
<context>
    <name>SearchWindow</name>
    <message>
        <source>&amp;Query:</source>
        <translation>S&amp;uche:</translation>
    </message>
    <message>
        <source>function:ME1.* source:5, or words of the line; the fields below put it together</source>
        <translation>function:ME1.* source:5 oder Wörter der Zeile; die Felder darunter setzen sie zusammen</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>Search anew (F5)</source>
        <translation>Neu suchen (F5)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>End the search; what was found stays in the list</source>
        <translation>Die Suche beenden; was gefunden wurde, bleibt in der Liste</translation>
    </message>
    <message>
        <source>&amp;Function:</source>
        <translation>&amp;Funktion:</translation>
    </message>
    <message>
        <source>ME1.KEY1 or ME1.*</source>
        <translation>ME1.KEY1 oder ME1.*</translation>
    </message>
    <message>
        <source>&amp;Destination:</source>
        <translation>&amp;Ziel:</translation>
    </message>
    <message>
        <source>Mainframe2</source>
        <translation>Mainframe2</translation>
    </message>
    <message>
        <source>So&amp;urce:</source>
        <translation>&amp;Quelle:</translation>
    </message>
    <message>
        <source>5 or its name</source>
        <translation>5 oder ihr Name</translation>
    </message>
    <message>
        <source>&amp;Value:</source>
        <translation>&amp;Wert:</translation>
    </message>
    <message>
        <source>0.5 or PARAM=0.5</source>
        <translation>0.5 oder PARAM=0.5</translation>
    </message>
    <message>
        <source>Classic &amp;group:</source>
        <translation>Klassische &amp;Gruppe:</translation>
    </message>
    <message>
        <source>Me3 - Key2</source>
        <translation>Me3 - Key2</translation>
    </message>
    <message>
        <source>&amp;Text:</source>
        <translation>&amp;Text:</translation>
    </message>
    <message>
        <source>part of the line</source>
        <translation>ein Teil der Zeile</translation>
    </message>
    <message>
        <source>&amp;Look at:</source>
        <translation>&amp;Ansehen:</translation>
    </message>
    <message>
        <source>Commands found</source>
        <translation>Gefundene Befehle</translation>
    </message>
    <message>
        <source>Progress of the search</source>
        <translation>Fortschritt der Suche</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Show the command in its macro (Enter)</source>
        <translation>Den Befehl in seinem Makro zeigen (Eingabetaste)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>SettingsText</name>
    <message>
        <source>not taken: the settings file cannot keep this character (it knows those of Windows-1252)</source>
        <translation>nicht übernommen: die Einstellungsdatei kann dieses Zeichen nicht aufnehmen (sie kennt die von Windows-1252)</translation>
    </message>
</context>
<context>
    <name>SheetWindow</name>
    <message>
        <source>&amp;What:</source>
        <translation>&amp;Was:</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>End the reading; the sheet stays as it was</source>
        <translation>Das Lesen beenden; das Blatt bleibt, wie es war</translation>
    </message>
    <message>
        <source>&amp;Paper:</source>
        <translation>&amp;Papier:</translation>
    </message>
    <message>
        <source>&amp;After this macro</source>
        <translation>N&amp;ach diesem Makro</translation>
    </message>
    <message>
        <source>List what the values are after the macro</source>
        <translation>Auflisten, welche Werte nach dem Makro gelten</translation>
    </message>
    <message>
        <source>&amp;Findings</source>
        <translation>&amp;Befunde</translation>
    </message>
    <message>
        <source>Tell what the check finds</source>
        <translation>Sagen, was die Prüfung findet</translation>
    </message>
    <message>
        <source>&amp;Notes</source>
        <translation>&amp;Notizen</translation>
    </message>
    <message>
        <source>Lines for notes behind each macro</source>
        <translation>Zeilen für Notizen hinter jedem Makro</translation>
    </message>
    <message>
        <source>&amp;Zoom:</source>
        <translation>&amp;Zoom:</translation>
    </message>
    <message>
        <source>Preview of the sheet</source>
        <translation>Vorschau des Blatts</translation>
    </message>
    <message>
        <source>Progress of the sheet</source>
        <translation>Fortschritt des Blatts</translation>
    </message>
    <message>
        <source>P&amp;rint...</source>
        <translation>D&amp;rucken...</translation>
    </message>
    <message>
        <source>Print the sheet (Ctrl+P)</source>
        <translation>Das Blatt drucken (Strg+P)</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
    <message>
        <source>Write the sheet to a file: PDF, HTML or CSV (Ctrl+E)</source>
        <translation>Das Blatt in eine Datei schreiben: PDF, HTML oder CSV (Strg+E)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>SheetWords</name>
    <message>
        <source>en</source>
        <comment>the code of this language</comment>
        <translation>de</translation>
    </message>
    <message>
        <source>Macros</source>
        <translation>Makros</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>empty macro</source>
        <translation>leeres Makro</translation>
    </message>
    <message>
        <source>no macros</source>
        <translation>keine Makros</translation>
    </message>
    <message>
        <source>cannot be read (%1)</source>
        <translation>kann nicht gelesen werden (%1)</translation>
    </message>
    <message>
        <source>Findings</source>
        <translation>Befunde</translation>
    </message>
    <message>
        <source>After this macro</source>
        <translation>Nach diesem Makro</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>no value that could be told is changed</source>
        <translation>kein Wert, der sich nennen ließe, wird geändert</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>What these commands do, or a part of it, cannot be told: %1</source>
        <translation>Was diese Befehle bewirken, oder ein Teil davon, lässt sich nicht sagen: %1</translation>
    </message>
    <message>
        <source>%1 (continued)</source>
        <translation>%1 (Fortsetzung)</translation>
    </message>
    <message>
        <source>page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>%1 (unsaved changes)</source>
        <translation>%1 (ungesicherte Änderungen)</translation>
    </message>
    <message>
        <source>changed by %1</source>
        <translation>geändert um %1</translation>
    </message>
</context>
<context>
    <name>SnapshotRestoreDialog</name>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Macros of the snapshot</source>
        <translation>Makros des Abzugs</translation>
    </message>
    <message>
        <source>Tick &amp;All</source>
        <translation>&amp;Alle anhaken</translation>
    </message>
    <message>
        <source>Tick &amp;None</source>
        <translation>&amp;Keines anhaken</translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Write the ticked macros; what stands there is kept first, and each is verified</source>
        <translation>Die angehakten Makros schreiben; was dort steht, wird erst aufgehoben, und jedes wird geprüft</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>StepNames</name>
    <message numerus="yes">
        <source>insert %n commands</source>
        <translation>
            <numerusform>%n Befehl einfügen</numerusform>
            <numerusform>%n Befehle einfügen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>delete %n commands</source>
        <translation>
            <numerusform>%n Befehl löschen</numerusform>
            <numerusform>%n Befehle löschen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>move %n commands</source>
        <translation>
            <numerusform>%n Befehl verschieben</numerusform>
            <numerusform>%n Befehle verschieben</numerusform>
        </translation>
    </message>
    <message>
        <source>modify command %1</source>
        <translation>Befehl %1 ändern</translation>
    </message>
    <message>
        <source>rename the macro</source>
        <translation>Makro umbenennen</translation>
    </message>
    <message numerus="yes">
        <source>take %n differences</source>
        <translation>
            <numerusform>%n Unterschied übernehmen</numerusform>
            <numerusform>%n Unterschiede übernehmen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>cut %n commands</source>
        <translation>
            <numerusform>%n Befehl ausschneiden</numerusform>
            <numerusform>%n Befehle ausschneiden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>paste %n commands</source>
        <translation>
            <numerusform>%n Befehl aus der Zwischenablage einfügen</numerusform>
            <numerusform>%n Befehle aus der Zwischenablage einfügen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>duplicate %n commands</source>
        <translation>
            <numerusform>%n Befehl duplizieren</numerusform>
            <numerusform>%n Befehle duplizieren</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>update of %n values</source>
        <translation>
            <numerusform>%n Wert aktualisieren</numerusform>
            <numerusform>%n Werte aktualisieren</numerusform>
        </translation>
    </message>
    <message>
        <source>write the macro anew</source>
        <translation>Makro neu schreiben</translation>
    </message>
    <message>
        <source>discard changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
    <message>
        <source>they cannot be read</source>
        <translation>sie sind nicht lesbar</translation>
    </message>
    <message>
        <source>the file is too large</source>
        <translation>die Datei ist zu groß</translation>
    </message>
    <message>
        <source>the file is damaged</source>
        <translation>die Datei ist beschädigt</translation>
    </message>
    <message>
        <source>another version of the program has written them</source>
        <translation>eine andere Version des Programms hat sie geschrieben</translation>
    </message>
    <message>
        <source>they do not lead to what the macro holds</source>
        <translation>sie führen nicht zu dem, was das Makro enthält</translation>
    </message>
    <message>
        <source>%1; the steps of an earlier run were put aside: %2</source>
        <translation>%1; die Schritte eines früheren Laufs wurden beiseitegelegt: %2</translation>
    </message>
    <message>
        <source>%1; it cannot be undone after a restart</source>
        <translation>%1; nach einem Neustart lässt es sich nicht rückgängig machen</translation>
    </message>
    <message numerus="yes">
        <source>change %n texts</source>
        <translation>
            <numerusform>%n Text ändern</numerusform>
            <numerusform>%n Texte ändern</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>capture of %n values</source>
        <translation>
            <numerusform>Aufnahme von %n Wert</numerusform>
            <numerusform>Aufnahme von %n Werten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StepsDialog</name>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>&amp;Steps of this macro, the first on top:</source>
        <translation>&amp;Schritte dieses Makros, der erste zuoberst:</translation>
    </message>
    <message>
        <source>Steps of this macro</source>
        <translation>Schritte dieses Makros</translation>
    </message>
    <message>
        <source>&amp;Go There</source>
        <translation>&amp;Dorthin gehen</translation>
    </message>
    <message>
        <source>Undo or redo everything up to the chosen step</source>
        <translation>Alles bis zum ausgewählten Schritt rückgängig machen oder wiederholen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
</context>
<context>
    <name>TransferText</name>
    <message>
        <source>the transfer is done</source>
        <translation>die Übertragung ist abgeschlossen</translation>
    </message>
    <message>
        <source>the panel refused the login</source>
        <translation>das Bedienpult hat die Anmeldung abgelehnt</translation>
    </message>
    <message>
        <source>the panel has no such file or folder</source>
        <translation>Datei oder Ordner fehlt auf dem Bedienpult</translation>
    </message>
    <message>
        <source>the panel cannot be reached</source>
        <translation>das Bedienpult ist nicht erreichbar</translation>
    </message>
    <message>
        <source>the panel does not answer</source>
        <translation>das Bedienpult antwortet nicht</translation>
    </message>
    <message>
        <source>the connection was cut</source>
        <translation>die Verbindung wurde unterbrochen</translation>
    </message>
    <message>
        <source>the panel&apos;s disk is full</source>
        <translation>der Speicher des Bedienpults ist voll</translation>
    </message>
    <message>
        <source>the local file cannot be read or written</source>
        <translation>die lokale Datei ist nicht lesbar oder nicht schreibbar</translation>
    </message>
    <message>
        <source>the transfer was cancelled</source>
        <translation>die Übertragung wurde abgebrochen</translation>
    </message>
    <message>
        <source>the transfer library (libcurl4) cannot be loaded; is it installed?</source>
        <translation>die Übertragungsbibliothek (libcurl4) lässt sich nicht laden; ist sie installiert?</translation>
    </message>
    <message>
        <source>the transfer failed</source>
        <translation>die Übertragung ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>the macro was sent, but the panel could not be told to read it</source>
        <translation>das Makro wurde gesendet, aber das Bedienpult konnte nicht zum Einlesen aufgefordert werden</translation>
    </message>
    <message>
        <source>the panel is too slow</source>
        <translation>das Bedienpult ist zu langsam</translation>
    </message>
    <message>
        <source>the panel broke off with an error of its own (451), such as a file that it cannot read or write</source>
        <translation>das Bedienpult brach mit einem eigenen Fehler ab (451), etwa einer Datei, die es nicht lesen oder schreiben kann</translation>
    </message>
    <message>
        <source>what the panel sent is no macro</source>
        <translation>was das Bedienpult sandte, ist kein Makro</translation>
    </message>
    <message>
        <source>the panel stored something else than what was sent</source>
        <translation>das Bedienpult hat etwas anderes gespeichert als gesendet wurde</translation>
    </message>
    <message>
        <source>verified</source>
        <translation>geprüft</translation>
    </message>
    <message>
        <source>not verified: %1</source>
        <translation>nicht geprüft: %1</translation>
    </message>
    <message>
        <source>%1; not verified: %2</source>
        <translation>%1; nicht geprüft: %2</translation>
    </message>
    <message>
        <source>%1; the panel holds again what it held before, verified</source>
        <translation>%1; auf dem Bedienpult steht wieder, was vorher da war, geprüft</translation>
    </message>
    <message>
        <source>%1; what the panel holds now is unknown: %2</source>
        <translation>%1; was auf dem Bedienpult jetzt steht, ist unbekannt: %2</translation>
    </message>
</context>
<context>
    <name>WorkplacesWindow</name>
    <message>
        <source>&amp;Left:</source>
        <translation>&amp;Links:</translation>
    </message>
    <message>
        <source>&amp;Right:</source>
        <translation>&amp;Rechts:</translation>
    </message>
    <message>
        <source>Read &amp;again</source>
        <translation>Neu &amp;lesen</translation>
    </message>
    <message>
        <source>&amp;Differences only</source>
        <translation>Nur &amp;Unterschiede</translation>
    </message>
    <message>
        <source>&amp;Tick all that differ</source>
        <translation>Alles &amp;Verschiedene anhaken</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>Ver&amp;gleichen</translation>
    </message>
    <message>
        <source>What differs between the two macros of the current row (Enter)</source>
        <translation>Was sich zwischen den beiden Makros der Zeile unterscheidet (Eingabetaste)</translation>
    </message>
    <message>
        <source>Macros of both workplaces</source>
        <translation>Makros beider Arbeitsplätze</translation>
    </message>
    <message>
        <source>Try &amp;what failed again</source>
        <translation>&amp;Fehlgeschlagenes erneut versuchen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Copy to the le&amp;ft</source>
        <translation>Nach &amp;links kopieren</translation>
    </message>
    <message>
        <source>Copy to the ri&amp;ght</source>
        <translation>Nach &amp;rechts kopieren</translation>
    </message>
</context>
<context>
    <name>tessaly::ActFinder</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>tessaly::Application</name>
    <message>
        <source>NOT opened: the sample site (there is none, or no room for a copy)</source>
        <translation>NICHT geöffnet: die Beispielanlage (es gibt keine, oder es ist kein Platz für eine Kopie)</translation>
    </message>
    <message>
        <source>this site describes no functions of a panel: &quot;Choose...&quot; in the menu &quot;Site&quot; sets one up</source>
        <translation>diese Anlagendaten beschreiben keine Funktionen eines Bedienpults: „Wählen...“ im Menü „Anlage“ richtet welche ein</translation>
    </message>
</context>
<context>
    <name>tessaly::BatchRecoveries</name>
    <message>
        <source>&quot;%1&quot; was cut short, and has been ended</source>
        <translation>„%1“ war unterbrochen und ist zu Ende geführt worden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was cut short, and has been undone</source>
        <translation>„%1“ war unterbrochen und ist zurückgenommen worden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was cut short; it goes on once its panel is connected</source>
        <translation>„%1“ war unterbrochen; es geht weiter, sobald das Bedienpult verbunden ist</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was cut short, and is let alone: %2</source>
        <translation>„%1“ war unterbrochen und bleibt, wie es ist: %2</translation>
    </message>
    <message>
        <source>%1; let alone, since somebody else has written there: %2</source>
        <translation>%1; in Ruhe gelassen, weil dort jemand anderes geschrieben hat: %2</translation>
    </message>
    <message>
        <source>%1; NOT written: %2 (%3)</source>
        <translation>%1; NICHT geschrieben: %2 (%3)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was cut short, and is not ended yet</source>
        <translation>&quot;%1&quot; wurde unterbrochen und ist noch nicht zu Ende geführt</translation>
    </message>
    <message>
        <source>nobody knows whether many macros were being written: the folder of such %1</source>
        <translation>niemand weiß, ob gerade viele Makros geschrieben wurden: der Ordner dafür %1</translation>
    </message>
</context>
<context>
    <name>tessaly::Browser</name>
    <message>
        <source>gone: %1 is no longer on the panel</source>
        <translation>verschwunden: %1 ist nicht mehr auf dem Bedienpult</translation>
    </message>
    <message>
        <source>renamed: %1 has another name on the panel now</source>
        <translation>umbenannt: %1 heißt auf dem Bedienpult jetzt anders</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>NOT listed: %1 (%2)</source>
        <translation>NICHT aufgelistet: %1 (%2)</translation>
    </message>
</context>
<context>
    <name>tessaly::CaptureModel</name>
    <message>
        <source>waiting</source>
        <translation>wartet</translation>
    </message>
    <message>
        <source>did not come</source>
        <translation>nicht gekommen</translation>
    </message>
    <message>
        <source>same</source>
        <translation>gleich</translation>
    </message>
    <message>
        <source>differs</source>
        <translation>weicht ab</translation>
    </message>
    <message>
        <source>changed in the macro meanwhile</source>
        <translation>inzwischen im Makro geändert</translation>
    </message>
    <message>
        <source>cannot be asked: a classic command</source>
        <translation>nicht zu erfragen: ein klassischer Befehl</translation>
    </message>
    <message>
        <source>cannot be asked: no destination</source>
        <translation>nicht zu erfragen: kein Ziel</translation>
    </message>
    <message>
        <source>cannot be asked: the function has no value</source>
        <translation>nicht zu erfragen: die Funktion hat keinen Wert</translation>
    </message>
    <message>
        <source>cannot be asked: the value is that of another function</source>
        <translation>nicht zu erfragen: der Wert gehört einer anderen Funktion</translation>
    </message>
    <message>
        <source>cannot be asked: the command has no value</source>
        <translation>nicht zu erfragen: der Befehl hat keinen Wert</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>In the macro</source>
        <translation>Im Makro</translation>
    </message>
    <message>
        <source>On the panel</source>
        <translation>Auf dem Pult</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
</context>
<context>
    <name>tessaly::CaptureWindow</name>
    <message>
        <source>Capture</source>
        <translation>Aufnehmen</translation>
    </message>
    <message numerus="yes">
        <source>the %n selected commands</source>
        <translation>
            <numerusform>der %n gewählte Befehl</numerusform>
            <numerusform>die %n gewählten Befehle</numerusform>
        </translation>
    </message>
    <message>
        <source>all commands</source>
        <translation>alle Befehle</translation>
    </message>
    <message>
        <source>the pane is on another panel</source>
        <translation>der Bereich ist auf einem anderen Pult</translation>
    </message>
    <message>
        <source>another macro was opened in the pane</source>
        <translation>im Bereich wurde ein anderes Makro geöffnet</translation>
    </message>
    <message numerus="yes">
        <source>%n values taken over; &quot;Undo&quot; in the pane takes them back.</source>
        <translation>
            <numerusform>%n Wert übernommen; „Rückgängig“ im Bereich nimmt ihn zurück.</numerusform>
            <numerusform>%n Werte übernommen; „Rückgängig“ im Bereich nimmt sie zurück.</numerusform>
        </translation>
    </message>
    <message>
        <source>NOTHING was taken over: %1</source>
        <translation>NICHTS wurde übernommen: %1</translation>
    </message>
    <message>
        <source>There is no command to ask for.</source>
        <translation>Es gibt keinen Befehl zu erfragen.</translation>
    </message>
    <message>
        <source>%1 of %2 values have come; %3 differ, %4 are ticked.</source>
        <translation>%1 von %2 Werten sind gekommen; %3 weichen ab, %4 sind angekreuzt.</translation>
    </message>
    <message>
        <source>Waiting for the others.</source>
        <translation>Warte auf die anderen.</translation>
    </message>
    <message numerus="yes">
        <source>%n did not come; &quot;Ask Again&quot; asks for them.</source>
        <translation>
            <numerusform>%n ist nicht gekommen; „Erneut fragen“ erfragt ihn.</numerusform>
            <numerusform>%n sind nicht gekommen; „Erneut fragen“ erfragt sie.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n commands were changed meanwhile and stay as they are; &quot;Capture Anew&quot; begins with the macro as it is now.</source>
        <translation>
            <numerusform>%n Befehl wurde inzwischen geändert und bleibt, wie er ist; „Neu aufnehmen“ beginnt mit dem Makro, wie es jetzt ist.</numerusform>
            <numerusform>%n Befehle wurden inzwischen geändert und bleiben, wie sie sind; „Neu aufnehmen“ beginnt mit dem Makro, wie es jetzt ist.</numerusform>
        </translation>
    </message>
    <message>
        <source>The panel cannot be asked: %1.</source>
        <translation>Das Pult kann nicht gefragt werden: %1.</translation>
    </message>
    <message>
        <source>Nothing can be taken over: %1.</source>
        <translation>Nichts kann übernommen werden: %1.</translation>
    </message>
</context>
<context>
    <name>tessaly::Captures</name>
    <message>
        <source>&quot;Capture&quot; needs a pane that is connected to a panel, and a macro in it</source>
        <translation>„Aufnehmen“ braucht einen Bereich, der mit einem Pult verbunden ist, und ein Makro darin</translation>
    </message>
    <message>
        <source>the pane is not connected to a panel</source>
        <translation>der Bereich ist mit keinem Pult verbunden</translation>
    </message>
    <message>
        <source>the connection to the panel was lost</source>
        <translation>die Verbindung zum Pult ging verloren</translation>
    </message>
</context>
<context>
    <name>tessaly::CheckModel</name>
    <message>
        <source>Severity</source>
        <translation>Schwere</translation>
    </message>
    <message>
        <source>Macro</source>
        <translation>Makro</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regel</translation>
    </message>
    <message>
        <source>What is wrong</source>
        <translation>Was falsch ist</translation>
    </message>
    <message>
        <source>What would be right</source>
        <translation>Was richtig wäre</translation>
    </message>
</context>
<context>
    <name>tessaly::CheckWindow</name>
    <message>
        <source>Check</source>
        <translation>Prüfung</translation>
    </message>
    <message>
        <source>There is nothing to be checked: choose a macro or a folder in a pane first.</source>
        <translation>Es gibt nichts zu prüfen: erst in einer Seite ein Makro oder einen Ordner wählen.</translation>
    </message>
    <message>
        <source>There are no macros in %1.</source>
        <translation>In %1 gibt es keine Makros.</translation>
    </message>
    <message>
        <source>Cancelled. %1</source>
        <translation>Abgebrochen. %1</translation>
    </message>
    <message>
        <source>NOT checked: %1 (%2)</source>
        <translation>NICHT geprüft: %1 (%2)</translation>
    </message>
    <message numerus="yes">
        <source>%n macros looked at</source>
        <translation>
            <numerusform>%n Makro angesehen</numerusform>
            <numerusform>%n Makros angesehen</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing found: %1 in %2.</source>
        <translation>Nichts gefunden: %1 in %2.</translation>
    </message>
    <message>
        <source>%1 in %2: %3, %4, %5.</source>
        <translation>%1 in %2: %3, %4, %5.</translation>
    </message>
    <message numerus="yes">
        <source>%n errors</source>
        <translation>
            <numerusform>%n Fehler</numerusform>
            <numerusform>%n Fehler</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n warnings</source>
        <translation>
            <numerusform>%n Warnung</numerusform>
            <numerusform>%n Warnungen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n Hinweis</numerusform>
            <numerusform>%n Hinweise</numerusform>
        </translation>
    </message>
    <message>
        <source>All rules count.</source>
        <translation>Alle Regeln gelten.</translation>
    </message>
    <message>
        <source>Off for this site: %1</source>
        <translation>Aus für diesen Standort: %1</translation>
    </message>
    <message>
        <source>The rules could not be written: %1</source>
        <translation>Die Regeln ließen sich nicht schreiben: %1</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>&amp;Fix</source>
        <translation>&amp;Beheben</translation>
    </message>
    <message>
        <source>&amp;Switch Off &quot;%1&quot;</source>
        <translation>„%1“ &amp;ausschalten</translation>
    </message>
</context>
<context>
    <name>tessaly::Checking</name>
    <message>
        <source>%1 in this macro; F7 lists them</source>
        <translation>%1 in diesem Makro; F7 führt sie auf</translation>
    </message>
    <message>
        <source>NOT fixed: %1 has changed since it was checked</source>
        <translation>NICHT behoben: %1 hat sich seit der Prüfung geändert</translation>
    </message>
    <message>
        <source>fix command %1</source>
        <translation>Befehl %1 beheben</translation>
    </message>
    <message>
        <source>fixed: command %1 (%2)</source>
        <translation>behoben: Befehl %1 (%2)</translation>
    </message>
    <message>
        <source>NOT fixed: %1</source>
        <translation>NICHT behoben: %1</translation>
    </message>
    <message>
        <source>%1 has %2.</source>
        <translation>%1 hat %2.</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>command %1: %2</source>
        <translation>Befehl %1: %2</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Send it all the same?</source>
        <translation>Trotzdem senden?</translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n macros have errors:</source>
        <translation>
            <numerusform>%1 von %n Makro hat Fehler:</numerusform>
            <numerusform>%1 von %n Makros haben Fehler:</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Send all of them all the same?</source>
        <translation>Trotzdem alle senden?</translation>
    </message>
</context>
<context>
    <name>tessaly::ChoiceDialog</name>
    <message>
        <source>nothing to choose from</source>
        <translation>keine Auswahl vorhanden</translation>
    </message>
</context>
<context>
    <name>tessaly::ClassicEditorDialog</name>
    <message>
        <source>choose on the left</source>
        <translation>links auswählen</translation>
    </message>
    <message>
        <source>No function is known here: there is no decoding list &quot;%1&quot; that can be read.</source>
        <translation>Hier ist keine Funktion bekannt: es gibt keine lesbare Dekodierliste „%1“.</translation>
    </message>
    <message>
        <source>This function takes no parameters.</source>
        <translation>Diese Funktion hat keine Parameter.</translation>
    </message>
</context>
<context>
    <name>tessaly::CommandEditing</name>
    <message>
        <source>one command inserted</source>
        <translation>ein Befehl eingefügt</translation>
    </message>
    <message numerus="yes">
        <source>%n commands inserted</source>
        <translation>
            <numerusform>%n Befehl eingefügt</numerusform>
            <numerusform>%n Befehle eingefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>command %1 modified</source>
        <translation>Befehl %1 geändert</translation>
    </message>
    <message>
        <source>The macro that this command was built for is no longer open.</source>
        <translation>Das Makro, für das dieser Befehl gebaut wurde, ist nicht mehr geöffnet.</translation>
    </message>
    <message>
        <source>%1
The dialog stays as it is.</source>
        <translation>%1
Der Dialog bleibt, wie er ist.</translation>
    </message>
    <message>
        <source>NOT changed: %1</source>
        <translation>NICHT geändert: %1</translation>
    </message>
    <message>
        <source>one command inserted; it cannot be read back from the macro</source>
        <translation>ein Befehl eingefügt; er ist aus dem Makro nicht wieder lesbar</translation>
    </message>
</context>
<context>
    <name>tessaly::CommandList</name>
    <message numerus="yes">
        <source>%n commands</source>
        <translation>
            <numerusform>%n Befehl</numerusform>
            <numerusform>%n Befehle</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::CommandListModel</name>
    <message>
        <source>goes to %1</source>
        <translation>geht an %1</translation>
    </message>
</context>
<context>
    <name>tessaly::CommandRuns</name>
    <message>
        <source>a transfer is using the macro</source>
        <translation>eine Übertragung benutzt das Makro</translation>
    </message>
    <message>
        <source>command %1 NOT deleted</source>
        <translation>Befehl %1 NICHT gelöscht</translation>
    </message>
    <message numerus="yes">
        <source>%n commands NOT deleted</source>
        <translation>
            <numerusform>%n Befehl NICHT gelöscht</numerusform>
            <numerusform>%n Befehle NICHT gelöscht</numerusform>
        </translation>
    </message>
    <message>
        <source>command %1 deleted</source>
        <translation>Befehl %1 gelöscht</translation>
    </message>
    <message numerus="yes">
        <source>%n commands deleted</source>
        <translation>
            <numerusform>%n Befehl gelöscht</numerusform>
            <numerusform>%n Befehle gelöscht</numerusform>
        </translation>
    </message>
    <message>
        <source>NOT copied</source>
        <translation>NICHT kopiert</translation>
    </message>
    <message numerus="yes">
        <source>%n commands copied</source>
        <translation>
            <numerusform>%n Befehl kopiert</numerusform>
            <numerusform>%n Befehle kopiert</numerusform>
        </translation>
    </message>
    <message>
        <source>NOT cut</source>
        <translation>NICHT ausgeschnitten</translation>
    </message>
    <message numerus="yes">
        <source>%n commands cut</source>
        <translation>
            <numerusform>%n Befehl ausgeschnitten</numerusform>
            <numerusform>%n Befehle ausgeschnitten</numerusform>
        </translation>
    </message>
    <message>
        <source>NOT pasted</source>
        <translation>NICHT eingefügt</translation>
    </message>
    <message numerus="yes">
        <source>%n commands pasted</source>
        <translation>
            <numerusform>%n Befehl aus der Zwischenablage eingefügt</numerusform>
            <numerusform>%n Befehle aus der Zwischenablage eingefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>NOT duplicated</source>
        <translation>NICHT dupliziert</translation>
    </message>
    <message numerus="yes">
        <source>%n commands duplicated</source>
        <translation>
            <numerusform>%n Befehl dupliziert</numerusform>
            <numerusform>%n Befehle dupliziert</numerusform>
        </translation>
    </message>
    <message>
        <source>NOT moved</source>
        <translation>NICHT verschoben</translation>
    </message>
    <message>
        <source>command %1 moved; it is command %2 now</source>
        <translation>Befehl %1 verschoben; er ist jetzt Befehl %2</translation>
    </message>
    <message numerus="yes">
        <source>%n commands moved; they are commands %1 to %2 now</source>
        <translation>
            <numerusform>%n Befehl verschoben; er ist jetzt Befehl %1 bis %2</numerusform>
            <numerusform>%n Befehle verschoben; sie sind jetzt die Befehle %1 bis %2</numerusform>
        </translation>
    </message>
    <message>
        <source>the macro was changed meanwhile</source>
        <translation>das Makro wurde inzwischen geändert</translation>
    </message>
    <message>
        <source>the commands cannot be taken away where they are</source>
        <translation>die Befehle können dort, wo sie sind, nicht weggenommen werden</translation>
    </message>
    <message>
        <source>copied, but NOT taken away where they were</source>
        <translation>kopiert, aber am alten Ort NICHT weggenommen</translation>
    </message>
    <message numerus="yes">
        <source>%n commands moved to the other pane</source>
        <translation>
            <numerusform>%n Befehl in den anderen Bereich verschoben</numerusform>
            <numerusform>%n Befehle in den anderen Bereich verschoben</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::CompareModel</name>
    <message>
        <source>%1; nothing here</source>
        <translation>%1; hier nichts</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>take into %1</source>
        <translation>nach %1 übernehmen</translation>
    </message>
    <message>
        <source>alike</source>
        <translation>gleich</translation>
    </message>
    <message>
        <source>Take this difference into %1; of what is selected: Alt+Left</source>
        <translation>Diesen Unterschied nach %1 übernehmen; für das Gewählte: Alt+Links</translation>
    </message>
    <message>
        <source>Take this difference into %1; of what is selected: Alt+Right</source>
        <translation>Diesen Unterschied nach %1 übernehmen; für das Gewählte: Alt+Rechts</translation>
    </message>
    <message>
        <source>number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>difference</source>
        <translation>Unterschied</translation>
    </message>
</context>
<context>
    <name>tessaly::CompareWindow</name>
    <message>
        <source>Comparing...</source>
        <translation>Vergleiche...</translation>
    </message>
    <message>
        <source>Compare %1 with %2</source>
        <translation>%1 mit %2 vergleichen</translation>
    </message>
    <message>
        <source>Nothing can be taken into %1: %2.</source>
        <translation>Nach %1 lässt sich nichts übernehmen: %2.</translation>
    </message>
    <message>
        <source>There is nothing to compare in %1: %2.</source>
        <translation>In %1 gibt es nichts zu vergleichen: %2.</translation>
    </message>
    <message>
        <source>%1 – difference %2 of %3</source>
        <translation>%1 – Unterschied %2 von %3</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und noch einer (%n)</numerusform>
            <numerusform>und noch %n</numerusform>
        </translation>
    </message>
    <message>
        <source>Alt+Left</source>
        <translation>Alt+Links</translation>
    </message>
    <message>
        <source>Alt+Right</source>
        <translation>Alt+Rechts</translation>
    </message>
    <message>
        <source>Take into %1</source>
        <translation>Nach %1 übernehmen</translation>
    </message>
    <message>
        <source>Take All into %1</source>
        <translation>Alles nach %1 übernehmen</translation>
    </message>
    <message>
        <source>Take what is selected into %1 (%2)</source>
        <translation>Das Gewählte nach %1 übernehmen (%2)</translation>
    </message>
    <message>
        <source>Take all commands into %1</source>
        <translation>Alle Befehle nach %1 übernehmen</translation>
    </message>
    <message>
        <source>There is no further difference.</source>
        <translation>Es gibt keinen weiteren Unterschied.</translation>
    </message>
    <message>
        <source>There is no difference before.</source>
        <translation>Davor gibt es keinen Unterschied.</translation>
    </message>
    <message>
        <source>no difference is selected</source>
        <translation>kein Unterschied ist gewählt</translation>
    </message>
    <message numerus="yes">
        <source>take %n differences from %1</source>
        <translation>
            <numerusform>%n Unterschied von %1 übernehmen</numerusform>
            <numerusform>%n Unterschiede von %1 übernehmen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n differences taken into %1; nothing is saved yet</source>
        <translation>
            <numerusform>%n Unterschied nach %1 übernommen; noch ist nichts gespeichert</numerusform>
            <numerusform>%n Unterschiede nach %1 übernommen; noch ist nichts gespeichert</numerusform>
        </translation>
    </message>
    <message>
        <source>NOT taken into %1: %2</source>
        <translation>NICHT nach %1 übernommen: %2</translation>
    </message>
    <message>
        <source>the one before is still being taken</source>
        <translation>das vorige wird noch übernommen</translation>
    </message>
</context>
<context>
    <name>tessaly::ComparedPlace</name>
    <message>
        <source>the target</source>
        <translation>das Ziel</translation>
    </message>
    <message>
        <source>only what a pane holds can be changed here</source>
        <translation>hier lässt sich nur ändern, was eine Seite enthält</translation>
    </message>
    <message>
        <source>There is no place that the pane&apos;s macro belongs to.</source>
        <translation>Das Makro der Seite gehört zu keinem Ort.</translation>
    </message>
    <message>
        <source>the pane&apos;s macro has come from no place</source>
        <translation>das Makro der Seite kommt von keinem Ort</translation>
    </message>
    <message>
        <source>Now on the panel: %1
%2, workplace %3</source>
        <translation>Jetzt auf dem Bedienpult: %1
%2, Arbeitsplatz %3</translation>
    </message>
    <message>
        <source>Now on the disk: %1
%2</source>
        <translation>Jetzt auf der Platte: %1
%2</translation>
    </message>
    <message>
        <source>there is no macro any more</source>
        <translation>das Makro gibt es nicht mehr</translation>
    </message>
    <message>
        <source>the panel is being asked</source>
        <translation>das Bedienpult wird gerade gefragt</translation>
    </message>
    <message>
        <source>the panel is about to be asked</source>
        <translation>das Bedienpult wird gleich gefragt</translation>
    </message>
</context>
<context>
    <name>tessaly::Comparisons</name>
    <message>
        <source>%1, workplace %2</source>
        <translation>%1, Arbeitsplatz %2</translation>
    </message>
    <message>
        <source>the version</source>
        <translation>die Fassung</translation>
    </message>
    <message>
        <source>Version of %1: %2
%3</source>
        <translation>Fassung vom %1: %2
%3</translation>
    </message>
    <message>
        <source>only what a pane holds can be changed here</source>
        <translation>hier lässt sich nur ändern, was eine Seite enthält</translation>
    </message>
    <message>
        <source>the pane shows no macro</source>
        <translation>die Seite zeigt kein Makro</translation>
    </message>
    <message>
        <source>a key file, as a copy of it would be</source>
        <translation>eine Tastendatei, wie eine Kopie von ihr wäre</translation>
    </message>
    <message>
        <source>without a place of its own yet</source>
        <translation>noch ohne eigenen Ort</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (unsaved changes)</source>
        <translation>%1 (ungespeicherte Änderungen)</translation>
    </message>
    <message>
        <source>a key file cannot be changed</source>
        <translation>eine Tastendatei lässt sich nicht ändern</translation>
    </message>
    <message>
        <source>a transfer is using the macro</source>
        <translation>eine Übertragung benutzt das Makro</translation>
    </message>
    <message>
        <source>no macro is chosen in the pane</source>
        <translation>in der Seite ist kein Makro gewählt</translation>
    </message>
</context>
<context>
    <name>tessaly::CreateCommandDialog</name>
    <message>
        <source>choose a category</source>
        <translation>Kategorie auswählen</translation>
    </message>
    <message>
        <source>nothing more to choose</source>
        <translation>keine weitere Auswahl</translation>
    </message>
    <message>
        <source>choose on the left</source>
        <translation>links auswählen</translation>
    </message>
    <message>
        <source>type above</source>
        <translation>oben eintippen</translation>
    </message>
    <message>
        <source>nothing found</source>
        <translation>nichts gefunden</translation>
    </message>
    <message numerus="yes">
        <source>%n inserted</source>
        <translation>
            <numerusform>%n eingefügt</numerusform>
            <numerusform>%n eingefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>Clear the words</source>
        <translation>Die Wörter löschen</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n gefunden</numerusform>
            <numerusform>%n gefunden</numerusform>
        </translation>
    </message>
    <message>
        <source>Where Used</source>
        <translation>Wo benutzt</translation>
    </message>
</context>
<context>
    <name>tessaly::EnterTextDialog</name>
    <message numerus="yes">
        <source>%1 of %n characters</source>
        <translation>
            <numerusform>%1 von %n Zeichen</numerusform>
            <numerusform>%1 von %n Zeichen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::FirstStartDialog</name>
    <message>
        <source>The sample site did not come with this program.</source>
        <translation>Die Beispieldaten wurden mit diesem Programm nicht ausgeliefert.</translation>
    </message>
    <message>
        <source>Folder of an Existing Installation</source>
        <translation>Ordner einer vorhandenen Installation</translation>
    </message>
    <message>
        <source>The sample site could not be copied to %1.</source>
        <translation>Die Beispieldaten konnten nicht nach %1 kopiert werden.</translation>
    </message>
    <message>
        <source>Name the folder of the installation, please.</source>
        <translation>Bitte den Ordner der Installation angeben.</translation>
    </message>
    <message>
        <source>No site is found in %1.</source>
        <translation>In %1 wurden keine Anlagendaten gefunden.</translation>
    </message>
    <message>
        <source>Tessaly: Site</source>
        <translation>Tessaly: Anlagendaten</translation>
    </message>
    <message>
        <source>The window works with the site here</source>
        <translation>Das Fenster arbeitet mit den Anlagendaten hier</translation>
    </message>
    <message>
        <source>To work with another one, the window closes and opens again. It asks first what becomes of unsaved changes.</source>
        <translation>Für andere Anlagendaten schließt das Fenster und öffnet wieder. Es fragt zuvor, was aus ungespeicherten Änderungen wird.</translation>
    </message>
    <message>
        <source>There is a site here already, which is left as it is.</source>
        <translation>Hier sind schon Anlagendaten; sie bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>tessaly::GuideWindow</name>
    <message>
        <source>not in this guide: %1</source>
        <translation>nicht in diesem Handbuch: %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not in this page</source>
        <translation>„%1“ steht nicht auf dieser Seite</translation>
    </message>
</context>
<context>
    <name>tessaly::HistoryDialog</name>
    <message>
        <source>Nothing has been overwritten or deleted yet.</source>
        <translation>Bisher wurde nichts überschrieben oder gelöscht.</translation>
    </message>
    <message>
        <source>Nothing matches the filter.</source>
        <translation>Nichts entspricht dem Filter.</translation>
    </message>
    <message>
        <source>Clear the filter</source>
        <translation>Filter leeren</translation>
    </message>
</context>
<context>
    <name>tessaly::HistoryModel</name>
    <message>
        <source>saved over</source>
        <translation>beim Speichern ersetzt</translation>
    </message>
    <message>
        <source>copied over</source>
        <translation>beim Kopieren ersetzt</translation>
    </message>
    <message>
        <source>created over</source>
        <translation>beim Anlegen ersetzt</translation>
    </message>
    <message>
        <source>renamed</source>
        <translation>umbenannt</translation>
    </message>
    <message>
        <source>deleted</source>
        <translation>gelöscht</translation>
    </message>
    <message>
        <source>converted over</source>
        <translation>beim Umwandeln ersetzt</translation>
    </message>
    <message>
        <source>edited</source>
        <translation>bearbeitet</translation>
    </message>
    <message>
        <source>put back over</source>
        <translation>beim Wiederherstellen ersetzt</translation>
    </message>
    <message>
        <source>changes not saved</source>
        <translation>Änderungen nicht gespeichert</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Wann</translation>
    </message>
    <message>
        <source>What happened</source>
        <translation>Was geschah</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Where from</source>
        <translation>Woher</translation>
    </message>
</context>
<context>
    <name>tessaly::HistoryOperations</name>
    <message>
        <source>%1; the history could not keep what was there before</source>
        <translation>%1; der Verlauf konnte den früheren Stand nicht aufbewahren</translation>
    </message>
    <message>
        <source>It cannot be read as a macro: it can be saved as a file, but not put back.</source>
        <translation>Es ist nicht als Makro lesbar: es kann als Datei gespeichert, aber nicht wiederhergestellt werden.</translation>
    </message>
    <message>
        <source>Put back &quot;%1&quot; of %2?</source>
        <translation>„%1“ vom %2 wiederherstellen?</translation>
    </message>
    <message>
        <source>It overwrites &quot;%1&quot; in
%2</source>
        <translation>Überschrieben wird „%1“ in
%2</translation>
    </message>
    <message>
        <source>It came from outside the site and is written to
%1</source>
        <translation>Es kam von außerhalb der Anlagendaten und wird geschrieben nach
%1</translation>
    </message>
    <message>
        <source>It overwrites macro %1 of workplace %2 on the panel %3.</source>
        <translation>Überschrieben wird Makro %1 von Arbeitsplatz %2 auf dem Bedienpult %3.</translation>
    </message>
    <message>
        <source>written: %1 to %2</source>
        <translation>geschrieben: %1 nach %2</translation>
    </message>
    <message>
        <source>written, but it may not survive a power cut: %1 to %2</source>
        <translation>geschrieben, übersteht aber vielleicht keinen Stromausfall: %1 nach %2</translation>
    </message>
    <message>
        <source>NOT written: %1 to %2 (%3)</source>
        <translation>NICHT geschrieben: %1 nach %2 (%3)</translation>
    </message>
    <message>
        <source>NOT put back: %1 (no pane is connected to the panel %2 that it came from)</source>
        <translation>NICHT wiederhergestellt: %1 (kein Bereich ist mit dem Bedienpult %2 verbunden, von dem es kam)</translation>
    </message>
    <message>
        <source>put back on the panel: %1 (%2)</source>
        <translation>auf dem Bedienpult wiederhergestellt: %1 (%2)</translation>
    </message>
    <message>
        <source>NOT put back on the panel: %1 (%2)</source>
        <translation>NICHT auf dem Bedienpult wiederhergestellt: %1 (%2)</translation>
    </message>
    <message>
        <source>put back %1</source>
        <translation>%1 zurückholen</translation>
    </message>
    <message>
        <source>With %1</source>
        <translation>Mit %1</translation>
    </message>
    <message>
        <source>Reading the history</source>
        <translation>Der Verlauf wird gelesen</translation>
    </message>
    <message>
        <source>the history is not listed whole: %1</source>
        <translation>der Verlauf ist nicht vollständig aufgelistet: %1</translation>
    </message>
    <message>
        <source>NOT sent: %1</source>
        <translation>NICHT gesendet: %1</translation>
    </message>
</context>
<context>
    <name>tessaly::ListFinder</name>
    <message>
        <source>find</source>
        <translation>suchen</translation>
    </message>
    <message>
        <source>Find in the list</source>
        <translation>In der Liste suchen</translation>
    </message>
    <message>
        <source>F3: next, Shift+F3: the one before, Enter: choose, Esc: leave</source>
        <translation>F3: weiter, Umschalt+F3: zurück, Eingabe: auswählen, Esc: verlassen</translation>
    </message>
    <message>
        <source>not found</source>
        <translation>nicht gefunden</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n Treffer</numerusform>
            <numerusform>%n Treffer</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::LooseMacros</name>
    <message>
        <source>NOT opened: %1 (the pane has unsaved changes)</source>
        <translation>NICHT geöffnet: %1 (der Bereich enthält ungespeicherte Änderungen)</translation>
    </message>
    <message>
        <source>opened: %1; &quot;Save As...&quot; gives it a place</source>
        <translation>geöffnet: %1; „Speichern unter...“ gibt ihm einen Ort</translation>
    </message>
    <message>
        <source>NOT opened: %1 (%2)</source>
        <translation>NICHT geöffnet: %1 (%2)</translation>
    </message>
    <message>
        <source>there is no macro to be saved</source>
        <translation>es gibt kein Makro, das zu speichern wäre</translation>
    </message>
    <message>
        <source>NOT saved: %1 (%2)</source>
        <translation>NICHT gespeichert: %1 (%2)</translation>
    </message>
    <message>
        <source>saved: %1</source>
        <translation>gespeichert: %1</translation>
    </message>
    <message>
        <source>NOT saved: the pane shows another macro meanwhile</source>
        <translation>NICHT gespeichert: die Seite zeigt inzwischen ein anderes Makro</translation>
    </message>
    <message>
        <source>Open a Macro File</source>
        <translation>Eine Makrodatei öffnen</translation>
    </message>
    <message>
        <source>Macro files</source>
        <translation>Makrodateien</translation>
    </message>
</context>
<context>
    <name>tessaly::MacroOperations</name>
    <message>
        <source>%1; the history could not keep what was there before</source>
        <translation>%1; der Verlauf konnte den früheren Stand nicht aufbewahren</translation>
    </message>
    <message>
        <source>created: %1</source>
        <translation>erstellt: %1</translation>
    </message>
    <message>
        <source>NOT created: %1%2</source>
        <translation>NICHT erstellt: %1%2</translation>
    </message>
    <message>
        <source>created on the panel: %1%2</source>
        <translation>auf dem Bedienpult erstellt: %1%2</translation>
    </message>
    <message>
        <source>NOT created on the panel: %1%2</source>
        <translation>NICHT auf dem Bedienpult erstellt: %1%2</translation>
    </message>
    <message numerus="yes">
        <source> (%n commands of the key cannot be read in a macro)</source>
        <translation>
            <numerusform> (%n Befehl der Taste ist in einem Makro nicht lesbar)</numerusform>
            <numerusform> (%n Befehle der Taste sind in einem Makro nicht lesbar)</numerusform>
        </translation>
    </message>
    <message>
        <source>copied: %1 to %2%3</source>
        <translation>kopiert: %1 nach %2%3</translation>
    </message>
    <message>
        <source>NOT copied: %1 to %2%3</source>
        <translation>NICHT kopiert: %1 nach %2%3</translation>
    </message>
    <message>
        <source>asked: the panel is to rename %1</source>
        <translation>angefordert: das Bedienpult soll %1 umbenennen</translation>
    </message>
    <message>
        <source>NOT asked: the panel cannot be told to rename %1</source>
        <translation>NICHT angefordert: das Bedienpult lässt sich nicht auffordern, %1 umzubenennen</translation>
    </message>
    <message>
        <source>renamed: %1 to %2</source>
        <translation>umbenannt: %1 in %2</translation>
    </message>
    <message>
        <source>NOT renamed: %1%2</source>
        <translation>NICHT umbenannt: %1%2</translation>
    </message>
    <message>
        <source>deleted: %1</source>
        <translation>gelöscht: %1</translation>
    </message>
    <message>
        <source>NOT deleted: %1%2</source>
        <translation>NICHT gelöscht: %1%2</translation>
    </message>
    <message>
        <source>The history could not keep %1, so that it cannot be put back:
%2.

Delete it all the same?</source>
        <translation>Der Verlauf konnte %1 nicht aufbewahren, es ließe sich nicht wiederherstellen:
%2.

Trotzdem löschen?</translation>
    </message>
    <message>
        <source>asked: the panel is to delete %1</source>
        <translation>angefordert: das Bedienpult soll %1 löschen</translation>
    </message>
    <message>
        <source>NOT asked: the panel cannot be told to delete %1</source>
        <translation>NICHT angefordert: das Bedienpult lässt sich nicht auffordern, %1 zu löschen</translation>
    </message>
    <message>
        <source>NOT deleted: %1</source>
        <translation>NICHT gelöscht: %1</translation>
    </message>
    <message>
        <source>rename %1 to %2</source>
        <translation>%1 in %2 umbenennen</translation>
    </message>
    <message>
        <source>create %1</source>
        <translation>%1 anlegen</translation>
    </message>
    <message>
        <source>copy %1 to %2</source>
        <translation>%1 nach %2 kopieren</translation>
    </message>
    <message>
        <source>delete %1</source>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>NOT sent: %1</source>
        <translation>NICHT gesendet: %1</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>%1 wird geschrieben</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>%1; without the unsaved changes that are shown there</source>
        <translation>%1; ohne die ungespeicherten Änderungen, die dort gezeigt werden</translation>
    </message>
</context>
<context>
    <name>tessaly::MacroPane</name>
    <message>
        <source>Create a macro</source>
        <translation>Makro anlegen</translation>
    </message>
    <message>
        <source>Copy the macro of the other pane into this one</source>
        <translation>Makro des anderen Bereichs in diesen kopieren</translation>
    </message>
    <message>
        <source>Rename the macro</source>
        <translation>Makro umbenennen</translation>
    </message>
    <message>
        <source>Delete the macro, after a question; in the list: Del</source>
        <translation>Makro nach Rückfrage löschen; in der Liste: Entf</translation>
    </message>
    <message>
        <source>new [classic]: build a classic command</source>
        <translation>new [classic]: klassischen Befehl aufbauen</translation>
    </message>
    <message>
        <source>Build a panel-style command from the function dictionary</source>
        <translation>Pultbefehl aus dem Funktionsverzeichnis aufbauen</translation>
    </message>
    <message>
        <source>Build many panel-style commands at once</source>
        <translation>Viele Pultbefehle auf einmal aufbauen</translation>
    </message>
    <message>
        <source>Fetch the current values of the commands from the panel</source>
        <translation>Aktuelle Werte der Befehle vom Bedienpult holen</translation>
    </message>
    <message>
        <source>Put the changes where the macro came from</source>
        <translation>Änderungen dorthin schreiben, woher das Makro kam</translation>
    </message>
    <message>
        <source>Open the macro again as it was</source>
        <translation>Makro wieder so öffnen, wie es war</translation>
    </message>
    <message>
        <source>Show where each command goes to</source>
        <translation>Ziel jedes Befehls anzeigen</translation>
    </message>
    <message>
        <source>Show the commands as they are stored</source>
        <translation>Befehle so anzeigen, wie sie gespeichert sind</translation>
    </message>
    <message>
        <source>Show names and values in columns</source>
        <translation>Namen und Werte in Spalten anzeigen</translation>
    </message>
    <message>
        <source>Connect to the panel, or leave it</source>
        <translation>Verbindung zum Bedienpult herstellen oder trennen</translation>
    </message>
    <message>
        <source>line lost</source>
        <translation>Verbindung verloren</translation>
    </message>
    <message>
        <source>functions go to %1</source>
        <translation>Funktionen gehen an %1</translation>
    </message>
    <message>
        <source>The line to this panel is lost: nothing is behind the pane.</source>
        <translation>Die Verbindung zu diesem Bedienpult ist verloren: hinter dem Bereich steht nichts.</translation>
    </message>
    <message>
        <source>This pane has joined the line to %1: what the panel is asked to do goes there, macros go to the address here.</source>
        <translation>Dieser Bereich nutzt die Verbindung zu %1 mit: Anforderungen gehen dorthin, Makros an die Adresse hier.</translation>
    </message>
    <message>
        <source>Change the selected command; in the list: Enter</source>
        <translation>Ausgewählten Befehl ändern; in der Liste: Eingabe</translation>
    </message>
    <message>
        <source>Delete the selected commands; in the list: Del</source>
        <translation>Ausgewählte Befehle löschen; in der Liste: Entf</translation>
    </message>
    <message>
        <source>Macros in a snapshot can only be viewed
or copied from</source>
        <translation>Makros in einem Abzug lassen sich nur ansehen
oder von dort kopieren</translation>
    </message>
</context>
<context>
    <name>tessaly::MacroUndo</name>
    <message>
        <source>NOT undone: %1 (%2)</source>
        <translation>NICHT rückgängig gemacht: %1 (%2)</translation>
    </message>
    <message>
        <source>%1; the history could not keep what was there before</source>
        <translation>%1; der Verlauf konnte nicht aufheben, was vorher da war</translation>
    </message>
    <message>
        <source>The macro there has been deleted since.</source>
        <translation>Das Makro dort ist seither gelöscht worden.</translation>
    </message>
    <message>
        <source>The macro there has been changed since. The history keeps what it holds now.</source>
        <translation>Das Makro dort ist seither geändert worden. Der Verlauf hebt auf, was es jetzt enthält.</translation>
    </message>
    <message>
        <source>Undo &quot;%1&quot;?</source>
        <translation>„%1“ rückgängig machen?</translation>
    </message>
    <message>
        <source>no pane is connected to the panel %1</source>
        <translation>keine Seite ist mit dem Bedienpult %1 verbunden</translation>
    </message>
    <message>
        <source>the history no longer has what was there before</source>
        <translation>der Verlauf hat nicht mehr, was vorher da war</translation>
    </message>
    <message>
        <source>there is no such macro any more</source>
        <translation>dieses Makro gibt es nicht mehr</translation>
    </message>
    <message>
        <source>nothing has been changed</source>
        <translation>nichts ist geändert worden</translation>
    </message>
    <message>
        <source>undone: %1; what was there before is back in %2</source>
        <translation>rückgängig gemacht: %1; was vorher da war, steht wieder in %2</translation>
    </message>
    <message>
        <source>undone: %1; what was there before is back in macro %2 of workplace %3 on the panel %4 (%5)</source>
        <translation>rückgängig gemacht: %1; was vorher da war, steht wieder in Makro %2 von Arbeitsplatz %3 auf dem Bedienpult %4 (%5)</translation>
    </message>
    <message>
        <source>undone: %1; %2 is deleted, as there was none before</source>
        <translation>rückgängig gemacht: %1; %2 ist gelöscht, denn vorher gab es dort keines</translation>
    </message>
    <message>
        <source>the panel cannot be told to delete it</source>
        <translation>das Bedienpult lässt sich nicht auffordern, es zu löschen</translation>
    </message>
    <message>
        <source>asked, to undo %1: the panel %2 is to delete macro %3 of workplace %4, as there was none before</source>
        <translation>angefragt, um „%1“ rückgängig zu machen: das Bedienpult %2 soll Makro %3 von Arbeitsplatz %4 löschen, denn vorher gab es dort keines</translation>
    </message>
    <message>
        <source>the panel cannot be told to rename it</source>
        <translation>das Bedienpult lässt sich nicht auffordern, es umzubenennen</translation>
    </message>
    <message>
        <source>asked, to undo %1: the panel %2 is to rename macro %3 of workplace %4 to %5</source>
        <translation>angefragt, um „%1“ rückgängig zu machen: das Bedienpult %2 soll Makro %3 von Arbeitsplatz %4 in %5 umbenennen</translation>
    </message>
    <message>
        <source>Reading the history</source>
        <translation>Der Verlauf wird gelesen</translation>
    </message>
    <message>
        <source>Undoing %1</source>
        <translation>%1 wird rückgängig gemacht</translation>
    </message>
</context>
<context>
    <name>tessaly::MainWindow</name>
    <message>
        <source>the connection to the panel was lost</source>
        <translation>die Verbindung zum Bedienpult ist abgebrochen</translation>
    </message>
    <message>
        <source>the open macro</source>
        <translation>das geöffnete Makro</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; has unsaved changes.</source>
        <translation>%1: „%2“ enthält ungespeicherte Änderungen.</translation>
    </message>
    <message>
        <source>the connection to the panel was lost, and the values of the update with it</source>
        <translation>die Verbindung zum Bedienpult ging verloren, und mit ihr die Werte der Aktualisierung</translation>
    </message>
    <message>
        <source>the connection to the panel was lost: %1</source>
        <translation>die Verbindung zum Bedienpult ging verloren: %1</translation>
    </message>
    <message>
        <source>NOT confirmed: the panel has not said that macro %1 is deleted</source>
        <translation>NICHT bestätigt: das Bedienpult hat nicht gemeldet, dass Makro %1 gelöscht ist</translation>
    </message>
    <message>
        <source>NOT confirmed: the panel has not said that macro %1 is renamed to %2</source>
        <translation>NICHT bestätigt: das Bedienpult hat nicht gemeldet, dass Makro %1 in %2 umbenannt ist</translation>
    </message>
    <message>
        <source>The settings could not be written: %1</source>
        <translation>Die Einstellungen konnten nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>connected to the panel again</source>
        <translation>wieder mit dem Pult verbunden</translation>
    </message>
    <message>
        <source>%1; what is unsaved would be lost if the program died now (%2)</source>
        <translation>%1; was nicht gespeichert ist, wäre verloren, wenn das Programm jetzt abstürzte (%2)</translation>
    </message>
    <message>
        <source>Writing the working copy</source>
        <translation>Die Arbeitskopie wird geschrieben</translation>
    </message>
    <message>
        <source>Writing the settings</source>
        <translation>Die Einstellungen werden geschrieben</translation>
    </message>
    <message>
        <source>the settings cannot be read (%1): they are left as they are</source>
        <translation>die Einstellungen können nicht gelesen werden (%1): sie bleiben, wie sie sind</translation>
    </message>
</context>
<context>
    <name>tessaly::MessageLog</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Grade</source>
        <translation>Stufe</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Wo</translation>
    </message>
</context>
<context>
    <name>tessaly::MultipleCommandsModel</name>
    <message>
        <source>%1
acts at once when the macro is run</source>
        <translation>%1
wirkt sofort, wenn das Makro abläuft</translation>
    </message>
</context>
<context>
    <name>tessaly::OpenMacros</name>
    <message>
        <source>opened: %1</source>
        <translation>geöffnet: %1</translation>
    </message>
    <message>
        <source>NOT opened: %1%2; the working copy still holds what was open before</source>
        <translation>NICHT geöffnet: %1%2; die Arbeitskopie enthält noch, was zuvor geöffnet war</translation>
    </message>
    <message>
        <source>NOT opened: %1%2</source>
        <translation>NICHT geöffnet: %1%2</translation>
    </message>
    <message>
        <source>%1 has been deleted by somebody else since it was opened here.

Save it anew?</source>
        <translation>%1 wurde von jemand anderem gelöscht, seit es hier geöffnet wurde.

Neu speichern?</translation>
    </message>
    <message>
        <source>%1 has been changed by somebody else since it was opened here.

Save over it?</source>
        <translation>%1 wurde von jemand anderem geändert, seit es hier geöffnet wurde.

Darüber speichern?</translation>
    </message>
    <message>
        <source>the demonstration sends nothing</source>
        <translation>die Demonstration sendet nichts</translation>
    </message>
    <message>
        <source>NOT saved: %1 is as somebody else has left it</source>
        <translation>NICHT gespeichert: %1 ist, wie es jemand anderes hinterlassen hat</translation>
    </message>
    <message>
        <source>saved: %1%2</source>
        <translation>gespeichert: %1%2</translation>
    </message>
    <message>
        <source>NOT saved: %1%2; the history keeps the changes</source>
        <translation>NICHT gespeichert: %1%2; der Verlauf bewahrt die Änderungen auf</translation>
    </message>
    <message>
        <source>NOT saved: %1%2; only this pane still holds the changes</source>
        <translation>NICHT gespeichert: %1%2; nur dieser Bereich enthält die Änderungen noch</translation>
    </message>
    <message>
        <source>%1; another program had changed the working copy, which was put right</source>
        <translation>%1; ein anderes Programm hatte die Arbeitskopie geändert, sie wurde berichtigt</translation>
    </message>
    <message>
        <source>%1; the history could not keep what was there before</source>
        <translation>%1; der Verlauf konnte den früheren Stand nicht aufbewahren</translation>
    </message>
    <message>
        <source>changes discarded: %1; the history keeps them</source>
        <translation>Änderungen verworfen: %1; der Verlauf bewahrt sie auf</translation>
    </message>
    <message>
        <source>changes discarded: %1</source>
        <translation>Änderungen verworfen: %1</translation>
    </message>
    <message>
        <source>NOT saved: %1%2</source>
        <translation>NICHT gespeichert: %1%2</translation>
    </message>
    <message>
        <source>NOT saved: this macro has not come from a place that it could go back to; &quot;Save As...&quot; gives it one</source>
        <translation>NICHT gespeichert: dieses Makro kam von keinem Ort, an den es zurück könnte; „Speichern unter...“ gibt ihm einen</translation>
    </message>
    <message>
        <source>NOT discarded%1</source>
        <translation>NICHT verworfen%1</translation>
    </message>
    <message>
        <source>NOT sent: %1; its changes are still unsaved</source>
        <translation>NICHT gesendet: %1; seine Änderungen sind noch ungespeichert</translation>
    </message>
    <message>
        <source>NOT written to %1%2</source>
        <translation>NICHT nach %1 geschrieben%2</translation>
    </message>
    <message>
        <source>What stands at %1 has been changed by somebody else since it was read here.

Overwrite it?</source>
        <translation>Was bei %1 steht, hat jemand anderes geändert, seit es hier gelesen wurde.

Überschreiben?</translation>
    </message>
    <message>
        <source>NOT written to %1: it is as somebody else has left it</source>
        <translation>NICHT nach %1 geschrieben: es ist so, wie jemand anderes es hinterlassen hat</translation>
    </message>
    <message>
        <source>Opening %1</source>
        <translation>%1 wird geöffnet</translation>
    </message>
    <message>
        <source>Keeping the changes of %1 in the history</source>
        <translation>Die Änderungen von %1 werden im Verlauf aufbewahrt</translation>
    </message>
    <message>
        <source>Saving %1</source>
        <translation>%1 wird gespeichert</translation>
    </message>
    <message>
        <source>NOT saved: %1%2; its changes are still unsaved</source>
        <translation>NICHT gespeichert: %1%2; die Änderungen sind noch ungespeichert</translation>
    </message>
    <message>
        <source>changes discarded: %1; the history could not keep them</source>
        <translation>Änderungen verworfen: %1; der Verlauf konnte sie nicht aufbewahren</translation>
    </message>
    <message>
        <source>%1 shows this macro with unsaved changes. They stay there, and saving them overwrites what is written there now.</source>
        <translation>%1 zeigt dieses Makro mit ungespeicherten Änderungen. Sie bleiben dort, und ihr Speichern überschreibt, was jetzt dorthin geschrieben wird.</translation>
    </message>
    <message>
        <source>NOT saved: %1 (%2)</source>
        <translation>NICHT gespeichert: %1 (%2)</translation>
    </message>
    <message>
        <source>It cannot be seen whether %1 has been changed by somebody else since it was opened here: %2.

Save over it all the same?</source>
        <translation>Ob jemand anderes %1 geändert hat, seit es hier geöffnet wurde, ist nicht zu sehen: %2.

Trotzdem darüber speichern?</translation>
    </message>
    <message>
        <source>Write it all the same?</source>
        <translation>Trotzdem schreiben?</translation>
    </message>
    <message>
        <source>NOT written: a pane shows that macro with unsaved changes</source>
        <translation>NICHT geschrieben: ein Bereich zeigt dieses Makro mit ungespeicherten Änderungen</translation>
    </message>
    <message>
        <source> (it has no place of its own)</source>
        <translation> (es hat keinen eigenen Ort)</translation>
    </message>
    <message>
        <source>The open macro</source>
        <translation>Das geöffnete Makro</translation>
    </message>
    <message>
        <source>%1 cannot be opened again as it was before the changes%2.

Give them up all the same?</source>
        <translation>%1 lässt sich nicht wieder so öffnen, wie es vor den Änderungen war%2.

Sie trotzdem aufgeben?</translation>
    </message>
    <message>
        <source>NOT discarded: %1%2</source>
        <translation>NICHT verworfen: %1%2</translation>
    </message>
    <message>
        <source>NOT saved: %1 is as it was</source>
        <translation>NICHT gespeichert: %1 ist, wie es war</translation>
    </message>
    <message>
        <source>It is not known whether %1 has been changed by somebody else since it was opened here.

Save over it?</source>
        <translation>Ob jemand anderes %1 geändert hat, seit es hier geöffnet wurde, ist nicht bekannt.

Darüber speichern?</translation>
    </message>
    <message>
        <source>the open macro</source>
        <translation>das geöffnete Makro</translation>
    </message>
    <message>
        <source>NOT saved: %1 is not there</source>
        <translation>NICHT gespeichert: %1 ist nicht da</translation>
    </message>
    <message>
        <source>There is no %1 any more.

Save it anew?</source>
        <translation>%1 gibt es nicht mehr.

Neu speichern?</translation>
    </message>
</context>
<context>
    <name>tessaly::PaneHeading</name>
    <message>
        <source>Connect again</source>
        <translation>Neu verbinden</translation>
    </message>
    <message>
        <source>The line to the panel is lost; nothing is behind this pane.</source>
        <translation>Die Verbindung zum Pult ist verloren; hinter diesem Bereich ist nichts.</translation>
    </message>
</context>
<context>
    <name>tessaly::PanelTransfer</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Putting back what the panel held before</source>
        <translation>Auf dem Bedienpult wird wiederhergestellt, was vorher da war</translation>
    </message>
    <message>
        <source>Cancelling as soon as the disk answers: %1</source>
        <translation>Wird abgebrochen, sobald die Festplatte antwortet: %1</translation>
    </message>
</context>
<context>
    <name>tessaly::ParameterPanel</name>
    <message>
        <source>type the value above</source>
        <translation>Wert oben eingeben</translation>
    </message>
    <message>
        <source>Timecode: hours:minutes:seconds:frames
&quot;.&quot; before the frames for drop frame
Frames from 0 to %1</source>
        <translation>Timecode: Stunden:Minuten:Sekunden:Bilder
„.“ vor den Bildern für Drop-Frame
Bilder von 0 bis %1</translation>
    </message>
    <message>
        <source>This parameter may stay empty.</source>
        <translation>Dieser Parameter kann leer bleiben.</translation>
    </message>
    <message>
        <source>(optional)</source>
        <translation>(kann leer bleiben)</translation>
    </message>
</context>
<context>
    <name>tessaly::Recovery</name>
    <message>
        <source>the record of unsaved changes is damaged</source>
        <translation>der Vermerk über ungespeicherte Änderungen ist beschädigt</translation>
    </message>
    <message>
        <source>the unsaved changes of %1 are gone: the working copy cannot be read</source>
        <translation>die ungespeicherten Änderungen von %1 sind verloren: die Arbeitskopie ist nicht lesbar</translation>
    </message>
    <message>
        <source>panel %1, workplace %2</source>
        <translation>Bedienpult %1, Arbeitsplatz %2</translation>
    </message>
    <message numerus="yes">
        <source>%n commands; changed from %1 to %2</source>
        <translation>
            <numerusform>%n Befehl; geändert von %1 bis %2</numerusform>
            <numerusform>%n Befehle; geändert von %1 bis %2</numerusform>
        </translation>
    </message>
    <message>
        <source>The file cannot be read as a macro. It can only be left to the history.</source>
        <translation>Die Datei ist nicht als Makro lesbar. Sie kann nur dem Verlauf überlassen werden.</translation>
    </message>
    <message>
        <source>The file is not as it was left: something else has changed it since.</source>
        <translation>Die Datei ist nicht mehr wie zuletzt: sie wurde inzwischen anderweitig geändert.</translation>
    </message>
    <message>
        <source>changes taken up again: %1</source>
        <translation>Änderungen wieder aufgenommen: %1</translation>
    </message>
    <message>
        <source>the changes stay in the history: %1</source>
        <translation>die Änderungen bleiben im Verlauf: %1</translation>
    </message>
    <message>
        <source>the unsaved changes could NOT be set aside: %1</source>
        <translation>die ungespeicherten Änderungen konnten NICHT beiseitegelegt werden: %1</translation>
    </message>
    <message>
        <source>you will be asked again at the next start: %1</source>
        <translation>beim nächsten Start wird erneut gefragt: %1</translation>
    </message>
    <message>
        <source>the unsaved changes of %1 cannot be read now (%2)</source>
        <translation>die ungespeicherten Änderungen von %1 lassen sich jetzt nicht lesen (%2)</translation>
    </message>
    <message>
        <source>the record of unsaved changes cannot be read (%1)</source>
        <translation>der Vermerk über ungespeicherte Änderungen lässt sich nicht lesen (%1)</translation>
    </message>
    <message>
        <source>; the history keeps the working copy</source>
        <translation>; der Verlauf bewahrt die Arbeitskopie auf</translation>
    </message>
    <message>
        <source>NOT taken up: %1 (%2)</source>
        <translation>NICHT wieder aufgenommen: %1 (%2)</translation>
    </message>
    <message>
        <source>the history cannot keep the changes (%1)</source>
        <translation>der Verlauf kann die Änderungen nicht aufbewahren (%1)</translation>
    </message>
</context>
<context>
    <name>tessaly::Rehearsals</name>
    <message>
        <source>The pane shows no macro.</source>
        <translation>Der Bereich zeigt kein Makro.</translation>
    </message>
</context>
<context>
    <name>tessaly::RehearseGrid</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>tessaly::RehearseModel</name>
    <message>
        <source>Acts, and changes no value that could be asked for</source>
        <translation>Wirkt, und ändert keinen Wert, der erfragt werden könnte</translation>
    </message>
    <message>
        <source>What it does cannot be told</source>
        <translation>Was er bewirkt, lässt sich nicht sagen</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
    <message>
        <source>A panel tells no values of classic commands.</source>
        <translation>Ein Pult nennt keine Werte klassischer Befehle.</translation>
    </message>
    <message>
        <source>It has not come.</source>
        <translation>Er ist nicht gekommen.</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>After this macro</source>
        <translation>Nach diesem Makro</translation>
    </message>
    <message>
        <source>At the start</source>
        <translation>Am Anfang</translation>
    </message>
    <message>
        <source>At step %1</source>
        <translation>Bei Schritt %1</translation>
    </message>
</context>
<context>
    <name>tessaly::RehearseSteps</name>
    <message>
        <source>Values at this step</source>
        <translation>Werte bei diesem Schritt</translation>
    </message>
    <message>
        <source>What each command does</source>
        <translation>Was jeder Befehl bewirkt</translation>
    </message>
</context>
<context>
    <name>tessaly::RehearseWindow</name>
    <message>
        <source>Replaying...</source>
        <translation>Spiele ab...</translation>
    </message>
    <message>
        <source>Rehearse %1</source>
        <translation>%1 proben</translation>
    </message>
    <message>
        <source>The macro has no command.</source>
        <translation>Das Makro hat keinen Befehl.</translation>
    </message>
    <message>
        <source>No command changes a value that could be told: &quot;After This Macro&quot; lists what they do.</source>
        <translation>Kein Befehl ändert einen Wert, der sich nennen ließe: „Nach diesem Makro“ zählt auf, was sie bewirken.</translation>
    </message>
    <message>
        <source>step %1 of %2</source>
        <translation>Schritt %1 von %2</translation>
    </message>
    <message>
        <source>Before the first command</source>
        <translation>Vor dem ersten Befehl</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>tessaly::ReplaceModel</name>
    <message>
        <source>makes in command %2: %1</source>
        <translation>bringt in Befehl %2 mit: %1</translation>
    </message>
    <message>
        <source>mends in command %2: %1</source>
        <translation>behebt in Befehl %2: %1</translation>
    </message>
    <message>
        <source>stays: %1</source>
        <translation>bleibt: %1</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Nachher</translation>
    </message>
    <message>
        <source>Findings, when what is ticked is changed</source>
        <translation>Befunde, wenn geändert wird, was angehakt ist</translation>
    </message>
</context>
<context>
    <name>tessaly::ReplaceWindow</name>
    <message>
        <source>cannot be read: %1</source>
        <translation>nicht lesbar: %1</translation>
    </message>
    <message>
        <source>Replace in macros</source>
        <translation>In Makros ersetzen</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>Segment</source>
        <translation>Segment</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>There is nothing to look at: choose a macro or a folder in a pane first.</source>
        <translation>Es gibt nichts anzusehen: erst in einer Seite ein Makro oder einen Ordner wählen.</translation>
    </message>
    <message>
        <source>left out: it has no place of its own yet</source>
        <translation>ausgelassen: es hat noch keinen eigenen Ort</translation>
    </message>
    <message>
        <source>Cancelled. %1</source>
        <translation>Abgebrochen. %1</translation>
    </message>
    <message>
        <source>NOT looked at: %1 (%2)</source>
        <translation>NICHT angesehen: %1 (%2)</translation>
    </message>
    <message numerus="yes">
        <source>%n macros looked at</source>
        <translation>
            <numerusform>%n Makro angesehen</numerusform>
            <numerusform>%n Makros angesehen</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing found: %1 in %2.</source>
        <translation>Nichts gefunden: %1 in %2.</translation>
    </message>
    <message>
        <source>%1 can be changed; %2 in %3.</source>
        <translation>%1 änderbar; %2 in %3.</translation>
    </message>
    <message numerus="yes">
        <source>%n commands</source>
        <translation>
            <numerusform>%n Befehl</numerusform>
            <numerusform>%n Befehle</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message numerus="yes">
        <source>%n commands cannot.</source>
        <translation>
            <numerusform>%n Befehl nicht.</numerusform>
            <numerusform>%n Befehle nicht.</numerusform>
        </translation>
    </message>
    <message>
        <source>NOTHING was replaced: %1 (%2)</source>
        <translation>NICHTS wurde ersetzt: %1 (%2)</translation>
    </message>
    <message numerus="yes">
        <source>Writing %n macros...</source>
        <translation>
            <numerusform>%n Makro wird geschrieben...</numerusform>
            <numerusform>%n Makros werden geschrieben...</numerusform>
        </translation>
    </message>
    <message>
        <source>replaced</source>
        <translation>ersetzt</translation>
    </message>
    <message>
        <source>NOT replaced: %1</source>
        <translation>NICHT ersetzt: %1</translation>
    </message>
    <message>
        <source>NOTHING was replaced: %1</source>
        <translation>NICHTS wurde ersetzt: %1</translation>
    </message>
    <message numerus="yes">
        <source>replacement in %n macros</source>
        <translation>
            <numerusform>Ersetzung in %n Makro</numerusform>
            <numerusform>Ersetzung in %n Makros</numerusform>
        </translation>
    </message>
    <message>
        <source>as before</source>
        <translation>wie vorher</translation>
    </message>
    <message numerus="yes">
        <source>Replaced in %n macros; &quot;Undo&quot; in the menu &quot;Macro&quot; takes it back.</source>
        <translation>
            <numerusform>In %n Makro ersetzt; „Rückgängig“ im Menü „Makro“ nimmt es zurück.</numerusform>
            <numerusform>In %n Makros ersetzt; „Rückgängig“ im Menü „Makro“ nimmt es zurück.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 NOT in the others: %2</source>
        <translation>%1 In den anderen NICHT: %2</translation>
    </message>
    <message>
        <source>%1 Off for this site: %2</source>
        <translation>%1 Für diese Anlage abgeschaltet: %2</translation>
    </message>
    <message>
        <source>replaced, NOT verified</source>
        <translation>ersetzt, NICHT geprüft</translation>
    </message>
    <message>
        <source>UNKNOWN what stands there: %1</source>
        <translation>UNBEKANNT, was dort steht: %1</translation>
    </message>
    <message numerus="yes">
        <source>NOTHING was replaced: %n macros have errors.</source>
        <translation>
            <numerusform>NICHTS wurde ersetzt: %n Makro hat Fehler.</numerusform>
            <numerusform>NICHTS wurde ersetzt: %n Makros haben Fehler.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::Replacements</name>
    <message>
        <source>left out: a pane shows it with unsaved changes</source>
        <translation>ausgelassen: eine Seite zeigt es mit ungespeicherten Änderungen</translation>
    </message>
</context>
<context>
    <name>tessaly::ReviewDesk</name>
    <message>
        <source>&amp;Where Used</source>
        <translation>&amp;Wo verwendet</translation>
    </message>
    <message>
        <source>&quot;Where Used&quot; looks for what a command names: select one first</source>
        <translation>„Wo verwendet“ sucht, was ein Befehl nennt: erst einen wählen</translation>
    </message>
    <message>
        <source>the selected command names nothing that could be looked for</source>
        <translation>der ausgewählte Befehl nennt nichts, wonach gesucht werden könnte</translation>
    </message>
</context>
<context>
    <name>tessaly::ReviewPlaces</name>
    <message>
        <source>the panel does not list it</source>
        <translation>das Bedienpult führt es nicht auf</translation>
    </message>
    <message>
        <source>%1, as pane %2 shows it</source>
        <translation>%1, wie Seite %2 es zeigt</translation>
    </message>
    <message>
        <source>key files: %1</source>
        <translation>Tastendateien: %1</translation>
    </message>
    <message>
        <source>workplace: %1</source>
        <translation>Arbeitsplatz: %1</translation>
    </message>
    <message>
        <source>application: %1</source>
        <translation>Anwendung: %1</translation>
    </message>
    <message>
        <source>all applications: %1</source>
        <translation>alle Anwendungen: %1</translation>
    </message>
    <message>
        <source>NOT opened: %1 (%2)</source>
        <translation>NICHT geöffnet: %1 (%2)</translation>
    </message>
    <message>
        <source>no pane shows it any more</source>
        <translation>keine Seite zeigt es mehr</translation>
    </message>
    <message>
        <source>no pane is connected to the panel %1</source>
        <translation>keine Seite ist mit dem Bedienpult %1 verbunden</translation>
    </message>
    <message>
        <source>no pane shows the harddisk</source>
        <translation>keine Seite zeigt die Festplatte</translation>
    </message>
    <message>
        <source>pane %1 has unsaved changes</source>
        <translation>Seite %1 hat ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>no list shows it</source>
        <translation>keine Liste zeigt es</translation>
    </message>
    <message>
        <source>workplace %1 on the panel %2</source>
        <translation>Arbeitsplatz %1 auf dem Bedienpult %2</translation>
    </message>
</context>
<context>
    <name>tessaly::SearchWindow</name>
    <message>
        <source>Search</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>Clear the query</source>
        <translation>Die Suche löschen</translation>
    </message>
    <message>
        <source>There is nothing to be searched: choose a macro or a folder in a pane first.</source>
        <translation>Es gibt nichts zu durchsuchen: erst in einer Seite ein Makro oder einen Ordner wählen.</translation>
    </message>
    <message>
        <source>There are no macros in %1.</source>
        <translation>In %1 gibt es keine Makros.</translation>
    </message>
    <message>
        <source>Cancelled. %1</source>
        <translation>Abgebrochen. %1</translation>
    </message>
    <message>
        <source>NOT searched: %1 (%2)</source>
        <translation>NICHT durchsucht: %1 (%2)</translation>
    </message>
    <message numerus="yes">
        <source>%n macros looked at</source>
        <translation>
            <numerusform>%n Makro angesehen</numerusform>
            <numerusform>%n Makros angesehen</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing found: %1 in %2.</source>
        <translation>Nichts gefunden: %1 in %2.</translation>
    </message>
    <message>
        <source>%1 in %2; %3 in %4.</source>
        <translation>%1 in %2; %3 in %4.</translation>
    </message>
    <message numerus="yes">
        <source>%n commands</source>
        <translation>
            <numerusform>%n Befehl</numerusform>
            <numerusform>%n Befehle</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n macros</source>
        <translation>
            <numerusform>%n Makro</numerusform>
            <numerusform>%n Makros</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message numerus="yes">
        <source>%n files could not be read.</source>
        <translation>
            <numerusform>%n Datei war nicht lesbar.</numerusform>
            <numerusform>%n Dateien waren nicht lesbar.</numerusform>
        </translation>
    </message>
    <message>
        <source>say above what is to be found, and in which macros</source>
        <translation>oben angeben, was zu finden ist und in welchen Makros</translation>
    </message>
    <message>
        <source>take a part of the query away, or choose other macros to search in</source>
        <translation>einen Teil der Abfrage wegnehmen oder andere Makros zum Durchsuchen wählen</translation>
    </message>
</context>
<context>
    <name>tessaly::Searching</name>
    <message>
        <source>&amp;Function %1</source>
        <translation>&amp;Funktion %1</translation>
    </message>
    <message>
        <source>&amp;Destination %1</source>
        <translation>&amp;Ziel %1</translation>
    </message>
    <message>
        <source>&amp;Source %1</source>
        <translation>&amp;Quelle %1</translation>
    </message>
    <message>
        <source>Classic &amp;Group %1</source>
        <translation>Klassische &amp;Gruppe %1</translation>
    </message>
    <message>
        <source>It is opened once the dialog is closed.</source>
        <translation>Es wird geöffnet, sobald der Dialog geschlossen ist.</translation>
    </message>
</context>
<context>
    <name>tessaly::SelectInputDialog</name>
    <message>
        <source>source hold</source>
        <translation>Quelle halten</translation>
    </message>
</context>
<context>
    <name>tessaly::SheetPreview</name>
    <message>
        <source>page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>tessaly::SheetWindow</name>
    <message>
        <source>macros</source>
        <translation>Makros</translation>
    </message>
    <message>
        <source>Sheet</source>
        <translation>Blatt</translation>
    </message>
    <message>
        <source>Cancelled.</source>
        <translation>Abgebrochen.</translation>
    </message>
    <message>
        <source>NOT done: %1</source>
        <translation>NICHT getan: %1</translation>
    </message>
    <message>
        <source>A4</source>
        <translation>A4</translation>
    </message>
    <message>
        <source>A5</source>
        <translation>A5</translation>
    </message>
    <message>
        <source>Letter</source>
        <translation>Letter</translation>
    </message>
    <message>
        <source>Width of the window</source>
        <translation>Fensterbreite</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>There is nothing to be put on paper: choose a macro or a folder in a pane first.</source>
        <translation>Es gibt nichts für das Papier: zuerst in einem Bereich ein Makro oder einen Ordner wählen.</translation>
    </message>
    <message numerus="yes">
        <source>%n macros could not be read; the sheet says why.</source>
        <translation>
            <numerusform>%n Makro konnte nicht gelesen werden; das Blatt sagt, warum.</numerusform>
            <numerusform>%n Makros konnten nicht gelesen werden; das Blatt sagt, warum.</numerusform>
        </translation>
    </message>
    <message>
        <source>Cancelled: %1</source>
        <translation>Abgebrochen: %1</translation>
    </message>
    <message>
        <source>NOT put on paper: %1 (%2)</source>
        <translation>NICHT auf Papier: %1 (%2)</translation>
    </message>
    <message>
        <source>printed: %1</source>
        <translation>gedruckt: %1</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>PDF (*.pdf)</source>
        <translation>PDF (*.pdf)</translation>
    </message>
    <message>
        <source>HTML (*.html)</source>
        <translation>HTML (*.html)</translation>
    </message>
    <message>
        <source>CSV (*.csv)</source>
        <translation>CSV (*.csv)</translation>
    </message>
    <message>
        <source>NOT written: %1 (the name ends in .pdf, .html or .csv)</source>
        <translation>NICHT geschrieben: %1 (der Name endet auf .pdf, .html oder .csv)</translation>
    </message>
    <message>
        <source>written: %1</source>
        <translation>geschrieben: %1</translation>
    </message>
    <message>
        <source>page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>tessaly::SnapshotRestoreDialog</name>
    <message numerus="yes">
        <source>%1 of %n macros are ticked</source>
        <translation>
            <numerusform>%1 von %n Makro ist angehakt</numerusform>
            <numerusform>%1 von %n Makros sind angehakt</numerusform>
        </translation>
    </message>
    <message>
        <source>Restoring macros</source>
        <translation>Makros werden wiederhergestellt</translation>
    </message>
    <message numerus="yes">
        <source>%n macros are restored</source>
        <translation>
            <numerusform>%n Makro ist wiederhergestellt</numerusform>
            <numerusform>%n Makros sind wiederhergestellt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1; %n macros are NOT</source>
        <translation>
            <numerusform>%1; %n Makro ist es NICHT</numerusform>
            <numerusform>%1; %n Makros sind es NICHT</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1; of %n of them what the panel holds now is unknown</source>
        <translation>
            <numerusform>%1; von %n davon ist unbekannt, was das Pult jetzt hat</numerusform>
            <numerusform>%1; von %n davon ist unbekannt, was das Pult jetzt hat</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing was restored.</source>
        <translation>Nichts wurde wiederhergestellt.</translation>
    </message>
</context>
<context>
    <name>tessaly::SnapshotRows</name>
    <message>
        <source>same: it stands there as it is in the snapshot</source>
        <translation>gleich: es steht dort wie im Abzug</translation>
    </message>
    <message>
        <source>new: nothing stands there</source>
        <translation>neu: dort steht nichts</translation>
    </message>
    <message>
        <source>changed: something else stands there</source>
        <translation>geändert: dort steht etwas anderes</translation>
    </message>
    <message>
        <source>RESTORED and verified</source>
        <translation>WIEDERHERGESTELLT und geprüft</translation>
    </message>
    <message>
        <source>RESTORED, not verified</source>
        <translation>WIEDERHERGESTELLT, nicht geprüft</translation>
    </message>
    <message>
        <source>NOT restored: %1</source>
        <translation>NICHT wiederhergestellt: %1</translation>
    </message>
    <message>
        <source>UNKNOWN what stands there now: %1</source>
        <translation>UNBEKANNT, was jetzt dort steht: %1</translation>
    </message>
    <message>
        <source>Workplace</source>
        <translation>Arbeitsplatz</translation>
    </message>
    <message>
        <source>Macro</source>
        <translation>Makro</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>unknown what stands there: %1</source>
        <translation>unbekannt, was dort steht: %1</translation>
    </message>
</context>
<context>
    <name>tessaly::Snapshots</name>
    <message>
        <source>Snapshots (*.zip)</source>
        <translation>Abzüge (*.zip)</translation>
    </message>
    <message>
        <source>NOT saved: the pane shows no folder with macros</source>
        <translation>NICHT gespeichert: die Seite zeigt keinen Ordner mit Makros</translation>
    </message>
    <message>
        <source>NOT saved: the pane is not connected to a panel</source>
        <translation>NICHT gespeichert: die Seite ist mit keinem Bedienpult verbunden</translation>
    </message>
    <message>
        <source>Saving the panel</source>
        <translation>Das Bedienpult wird gespeichert</translation>
    </message>
    <message>
        <source>Saving the folder</source>
        <translation>Der Ordner wird gespeichert</translation>
    </message>
    <message>
        <source>macros</source>
        <translation>Makros</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message numerus="yes">
        <source>saved and verified: %n macros in %1</source>
        <translation>
            <numerusform>gespeichert und geprüft: %n Makro in %1</numerusform>
            <numerusform>gespeichert und geprüft: %n Makros in %1</numerusform>
        </translation>
    </message>
    <message>
        <source>NOT saved: %1 (%2)</source>
        <translation>NICHT gespeichert: %1 (%2)</translation>
    </message>
    <message>
        <source>NOT opened: the pane has unsaved changes</source>
        <translation>NICHT geöffnet: die Seite hat ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Open Snapshot</source>
        <translation>Abzug öffnen</translation>
    </message>
    <message>
        <source>Reading the snapshot</source>
        <translation>Der Abzug wird gelesen</translation>
    </message>
    <message>
        <source>NOT opened: %1 (%2)</source>
        <translation>NICHT geöffnet: %1 (%2)</translation>
    </message>
    <message>
        <source>opened: %1; its macros can be viewed and copied from</source>
        <translation>geöffnet: %1; seine Makros lassen sich ansehen und von dort kopieren</translation>
    </message>
    <message>
        <source>NOT restored: the other pane is not connected to a panel</source>
        <translation>NICHT wiederhergestellt: die andere Seite ist mit keinem Bedienpult verbunden</translation>
    </message>
    <message>
        <source>To the panel %1</source>
        <translation>Auf das Bedienpult %1</translation>
    </message>
    <message>
        <source>NOT restored: the other pane shows no folder for macros</source>
        <translation>NICHT wiederhergestellt: die andere Seite zeigt keinen Ordner für Makros</translation>
    </message>
    <message>
        <source>To the folder %1</source>
        <translation>In den Ordner %1</translation>
    </message>
    <message>
        <source>NOT restored: no workplace with macros is chosen</source>
        <translation>NICHT wiederhergestellt: kein Arbeitsplatz mit Makros ist gewählt</translation>
    </message>
    <message>
        <source>Comparing macros</source>
        <translation>Makros werden verglichen</translation>
    </message>
    <message>
        <source>NOT restored: %1</source>
        <translation>NICHT wiederhergestellt: %1</translation>
    </message>
    <message numerus="yes">
        <source>restore of %n macros</source>
        <translation>
            <numerusform>Wiederherstellung von %n Makro</numerusform>
            <numerusform>Wiederherstellung von %n Makros</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking macros</source>
        <translation>Makros werden geprüft</translation>
    </message>
    <message>
        <source>NOT saved: the line leads to another panel, %1</source>
        <translation>NICHT gespeichert: die Verbindung führt zu einem anderen Bedienpult, %1</translation>
    </message>
    <message>
        <source>NOT restored: the line leads to another panel, %1</source>
        <translation>NICHT wiederhergestellt: die Verbindung führt zu einem anderen Bedienpult, %1</translation>
    </message>
</context>
<context>
    <name>tessaly::StatusStrip</name>
    <message>
        <source>Save Again</source>
        <translation>Erneut speichern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>A click, or Ctrl+Shift+M, shows the messages before it.</source>
        <translation>Ein Klick oder Strg+Umschalt+M zeigt die Meldungen davor.</translation>
    </message>
    <message numerus="yes">
        <source> (and %n failures before it)</source>
        <translation>
            <numerusform> (und %n Fehler davor)</numerusform>
            <numerusform> (und %n Fehler davor)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::StepOperations</name>
    <message>
        <source>undone: %1</source>
        <translation>rückgängig gemacht: %1</translation>
    </message>
    <message>
        <source>redone: %1</source>
        <translation>wiederholt: %1</translation>
    </message>
    <message>
        <source>NOT gone to another step: the macro was changed meanwhile</source>
        <translation>NICHT zu einem anderen Schritt gegangen: das Makro wurde inzwischen geändert</translation>
    </message>
    <message numerus="yes">
        <source>%n steps undone</source>
        <translation>
            <numerusform>%n Schritt rückgängig gemacht</numerusform>
            <numerusform>%n Schritte rückgängig gemacht</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n steps redone</source>
        <translation>
            <numerusform>%n Schritt wiederholt</numerusform>
            <numerusform>%n Schritte wiederholt</numerusform>
        </translation>
    </message>
    <message>
        <source>values are still coming from the panel; wait for them, or cancel the update</source>
        <translation>es kommen noch Werte vom Bedienpult; darauf warten oder die Aktualisierung abbrechen</translation>
    </message>
    <message>
        <source>a transfer is using the macro</source>
        <translation>eine Übertragung benutzt das Makro</translation>
    </message>
    <message>
        <source>NOT undone: %1</source>
        <translation>NICHT rückgängig gemacht: %1</translation>
    </message>
    <message>
        <source>NOT redone: %1</source>
        <translation>NICHT wiederholt: %1</translation>
    </message>
    <message>
        <source>%1; nothing is unsaved any more</source>
        <translation>%1; nichts ist mehr ungespeichert</translation>
    </message>
</context>
<context>
    <name>tessaly::StepsDialog</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>before the oldest step that is kept</source>
        <translation>vor dem ältesten Schritt, der aufbewahrt ist</translation>
    </message>
    <message>
        <source>as it was opened</source>
        <translation>wie es geöffnet wurde</translation>
    </message>
    <message>
        <source>%1 (saved)</source>
        <translation>%1 (gespeichert)</translation>
    </message>
    <message>
        <source>%1 (now)</source>
        <translation>%1 (jetzt)</translation>
    </message>
</context>
<context>
    <name>tessaly::ValueUpdate</name>
    <message numerus="yes">
        <source>%n commands updated</source>
        <translation>
            <numerusform>%n Befehl aktualisiert</numerusform>
            <numerusform>%n Befehle aktualisiert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>waiting for %n values from the panel</source>
        <translation>
            <numerusform>es wird auf %n Wert vom Bedienpult gewartet</numerusform>
            <numerusform>es wird auf %n Werte vom Bedienpult gewartet</numerusform>
        </translation>
    </message>
    <message>
        <source>update ended: the macro was changed meanwhile, the values that came are gone</source>
        <translation>Aktualisierung beendet: das Makro wurde inzwischen geändert, die Werte sind verworfen</translation>
    </message>
    <message>
        <source>update cancelled: the values that came are gone</source>
        <translation>Aktualisierung abgebrochen: die Werte sind verworfen</translation>
    </message>
    <message>
        <source>update ended: the pane is no longer connected, the values that came are gone</source>
        <translation>Aktualisierung beendet: der Bereich ist nicht mehr verbunden, die Werte sind verworfen</translation>
    </message>
    <message>
        <source>NOT updated: %1</source>
        <translation>NICHT aktualisiert: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n of them changed</source>
        <translation>
            <numerusform>%n davon geändert</numerusform>
            <numerusform>%n davon geändert</numerusform>
        </translation>
    </message>
    <message>
        <source>update ended: a macro was chosen meanwhile, the values that came are gone</source>
        <translation>Aktualisierung beendet: inzwischen wurde ein Makro ausgewählt, die Werte sind verworfen</translation>
    </message>
    <message numerus="yes">
        <source>%n values came; pane B shows the state before the update; use pane A, or &quot;Capture...&quot; in the menu &quot;Macro&quot;</source>
        <translation>
            <numerusform>%n Wert kam; Bereich B zeigt den Stand vor der Aktualisierung; Bereich A nehmen oder „Aufnehmen...“ im Menü „Makro“</numerusform>
            <numerusform>%n Werte kamen; Bereich B zeigt den Stand vor der Aktualisierung; Bereich A nehmen oder „Aufnehmen...“ im Menü „Makro“</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessaly::Workplaces</name>
    <message>
        <source>the folder</source>
        <translation>der Ordner</translation>
    </message>
    <message>
        <source>workplace %1</source>
        <translation>Arbeitsplatz %1</translation>
    </message>
    <message>
        <source>A snapshot</source>
        <translation>Ein Abzug</translation>
    </message>
    <message>
        <source>Workplace of the snapshot:</source>
        <translation>Arbeitsplatz des Abzugs:</translation>
    </message>
    <message>
        <source>Snapshot %1: %2</source>
        <translation>Abzug %1: %2</translation>
    </message>
    <message>
        <source>Folder...</source>
        <translation>Ordner...</translation>
    </message>
    <message>
        <source>Snapshot...</source>
        <translation>Abzug...</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Panel %1, workplace %2</source>
        <translation>Bedienpult %1, Arbeitsplatz %2</translation>
    </message>
    <message>
        <source>A folder with macros</source>
        <translation>Ein Ordner mit Makros</translation>
    </message>
    <message>
        <source>Snapshots (*.zip);;All files (*)</source>
        <translation>Abzüge (*.zip);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Speicher reicht nicht</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 lässt sich nicht lesen: %2</translation>
    </message>
    <message>
        <source>A pane shows what would be written over here with unsaved changes:
%1

The changes stay there, and saving them writes over what is copied now. Copy all the same?</source>
        <translation>Eine Seite zeigt mit ungespeicherten Änderungen, was hier überschrieben würde:
%1

Die Änderungen bleiben dort, und wer sie speichert, überschreibt, was jetzt kopiert wird. Trotzdem kopieren?</translation>
    </message>
    <message>
        <source>%1, macro %2</source>
        <translation>%1, Makro %2</translation>
    </message>
    <message>
        <source>workplaces are only compared here</source>
        <translation>Arbeitsplätze werden hier nur verglichen</translation>
    </message>
    <message>
        <source>the left one</source>
        <translation>das linke</translation>
    </message>
    <message>
        <source>the right one</source>
        <translation>das rechte</translation>
    </message>
</context>
<context>
    <name>tessaly::WorkplacesModel</name>
    <message>
        <source>= same</source>
        <translation>= gleich</translation>
    </message>
    <message>
        <source>≈ renamed only</source>
        <translation>≈ nur umbenannt</translation>
    </message>
    <message>
        <source>≠ different</source>
        <translation>≠ verschieden</translation>
    </message>
    <message>
        <source>← only left</source>
        <translation>← nur links</translation>
    </message>
    <message>
        <source>→ only right</source>
        <translation>→ nur rechts</translation>
    </message>
    <message>
        <source>? unreadable</source>
        <translation>? nicht lesbar</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
</context>
<context>
    <name>tessaly::WorkplacesWindow</name>
    <message>
        <source>Workplaces</source>
        <translation>Arbeitsplätze</translation>
    </message>
    <message>
        <source>Choose what is to stand on the left and on the right.</source>
        <translation>Wählen, was links und was rechts stehen soll.</translation>
    </message>
    <message>
        <source>Reading...</source>
        <translation>Wird gelesen...</translation>
    </message>
    <message>
        <source>NOT read to the end: %1</source>
        <translation>NICHT zu Ende gelesen: %1</translation>
    </message>
    <message>
        <source>%1 macros: %2 the same, %3 not the same</source>
        <translation>%1 Makros: %2 gleich, %3 nicht gleich</translation>
    </message>
    <message>
        <source>not copied: there is nothing to be copied</source>
        <translation>nicht kopiert: es gibt nichts zu kopieren</translation>
    </message>
    <message>
        <source>Nothing is ticked that differs and can be copied this way.</source>
        <translation>Nichts ist angehakt, das verschieden ist und sich so kopieren lässt.</translation>
    </message>
    <message>
        <source>copy of %1 macros to %2</source>
        <translation>Kopie von %1 Makros nach %2</translation>
    </message>
    <message>
        <source>waits</source>
        <translation>wartet</translation>
    </message>
    <message>
        <source>Copying...</source>
        <translation>Wird kopiert...</translation>
    </message>
    <message>
        <source>copied, verified</source>
        <translation>kopiert, geprüft</translation>
    </message>
    <message>
        <source>copied, NOT verified</source>
        <translation>kopiert, NICHT geprüft</translation>
    </message>
    <message>
        <source>NOT copied: %1</source>
        <translation>NICHT kopiert: %1</translation>
    </message>
    <message>
        <source>UNKNOWN what stands there: %1</source>
        <translation>UNBEKANNT, was dort steht: %1</translation>
    </message>
    <message>
        <source>%1 macros copied</source>
        <translation>%1 Makros kopiert</translation>
    </message>
    <message>
        <source>%1 macros copied, %2 NOT copied</source>
        <translation>%1 Makros kopiert, %2 NICHT kopiert</translation>
    </message>
    <message>
        <source>Ending what is being read or copied...</source>
        <translation>Was gelesen oder kopiert wird, wird beendet...</translation>
    </message>
    <message>
        <source>not copied: what stands there could not be read; read again</source>
        <translation>nicht kopiert: was dort steht, konnte nicht gelesen werden; erneut lesen</translation>
    </message>
    <message>
        <source>Reading what is to be copied...</source>
        <translation>Lesen, was kopiert werden soll...</translation>
    </message>
    <message>
        <source>not copied</source>
        <translation>nicht kopiert</translation>
    </message>
    <message numerus="yes">
        <source>Nothing was copied: %n macros have errors.</source>
        <translation>
            <numerusform>Nichts wurde kopiert: %n Makro hat Fehler.</numerusform>
            <numerusform>Nichts wurde kopiert: %n Makros haben Fehler.</numerusform>
        </translation>
    </message>
</context>
</TS>
