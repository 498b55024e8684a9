<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>CommandLogPanel</name>
    <message>
        <source>Filter, such as flash_intensity or err</source>
        <translation>Filter, etwa flash_intensity oder err</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Forget every line logged so far</source>
        <translation>Alle bisher protokollierten Zeilen verwerfen</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Speichern...</translation>
    </message>
    <message>
        <source>Save the lines shown to a text file</source>
        <translation>Die angezeigten Zeilen in eine Textdatei speichern</translation>
    </message>
    <message>
        <source>Save command log</source>
        <translation>Befehlsprotokoll speichern</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Textdateien (*.txt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Cannot save %1: %2</source>
        <translation>%1 kann nicht gespeichert werden: %2</translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>Controller command log</source>
        <translation>Befehlsprotokoll des Controllers</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Controller: %1</source>
        <translation>Controller: %1</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>&amp;Host</source>
        <translation>H&amp;ost</translation>
    </message>
    <message>
        <source>&amp;Scenario</source>
        <translation>&amp;Szenario</translation>
    </message>
    <message>
        <source>&amp;Open scenario file...</source>
        <translation>Szenariodatei ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Send &quot;ShowDynReflexSuppr&quot;</source>
        <translation>&quot;ShowDynReflexSuppr&quot; senden</translation>
    </message>
    <message>
        <source>Tell the camera settings module to always show dynamic reflex suppression</source>
        <translation>Das Modul der Kameraeinstellungen soll die dynamische Reflexunterdrückung immer anzeigen</translation>
    </message>
    <message>
        <source>Send other host &amp;message...</source>
        <translation>Andere Host-&amp;Nachricht senden...</translation>
    </message>
    <message>
        <source>&amp;Measuring</source>
        <translation>&amp;Messung läuft</translation>
    </message>
    <message>
        <source>Pretend the system is measuring: entries not meant for measurement are disabled</source>
        <translation>Eine laufende Messung vortäuschen: Einträge, die nicht für Messungen gedacht sind, werden gesperrt</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>%1 on the network</source>
        <translation>%1 im Netzwerk</translation>
    </message>
    <message>
        <source>simulated, scenario &quot;%1&quot;</source>
        <translation>simuliert, Szenario &quot;%1&quot;</translation>
    </message>
    <message>
        <source>QUARVO stand-in host - controller %1</source>
        <translation>QUARVO-Ersatz-Host - Controller %1</translation>
    </message>
    <message>
        <source>QUARVO stand-in host - scenario %1</source>
        <translation>QUARVO-Ersatz-Host - Szenario %1</translation>
    </message>
    <message>
        <source>Controller: %1, system model %2, protocol %3

Modules: %4</source>
        <translation>Controller: %1, Systemmodell %2, Protokoll %3

Module: %4</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Host message &quot;%1&quot; delivered to %2 receiver(s)</source>
        <translation>Host-Nachricht &quot;%1&quot; an %2 Empfänger zugestellt</translation>
    </message>
    <message>
        <source>Scenario</source>
        <translation>Szenario</translation>
    </message>
    <message>
        <source>Open scenario</source>
        <translation>Szenario öffnen</translation>
    </message>
    <message>
        <source>Scenarios (*.json);;All files (*)</source>
        <translation>Szenarien (*.json);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Host message</source>
        <translation>Host-Nachricht</translation>
    </message>
    <message>
        <source>Text delivered to &quot;%1&quot;:</source>
        <translation>Text für &quot;%1&quot;:</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About quarvo2-host...</source>
        <translation>&amp;Über quarvo2-host...</translation>
    </message>
    <message>
        <source>%1 opened</source>
        <translation>%1 geöffnet</translation>
    </message>
    <message>
        <source>About quarvo2-host</source>
        <translation>Über quarvo2-host</translation>
    </message>
    <message>
        <source>quarvo2-host %1

A stand-in for the QUARVO frontend: it loads the frontend modules as the frontend does and runs them against a simulated tracking controller or one on the network.

Qt %2

Modules loaded from %3:
%4</source>
        <translation>quarvo2-host %1

Ein Ersatz für das QUARVO-Frontend: Er lädt die Frontend-Module wie das Frontend und betreibt sie mit einem simulierten Tracking-Controller oder einem Controller im Netzwerk.

Qt %2

Module geladen aus %3:
%4</translation>
    </message>
    <message>
        <source>%1; the dialog shows no settings read from the controller.</source>
        <translation>%1; der Dialog zeigt keine vom Controller gelesenen Einstellungen.</translation>
    </message>
</context>
<context>
    <name>ModuleHost</name>
    <message>
        <source>Plug-in folder %1 does not exist</source>
        <translation>Der Plug-in-Ordner %1 existiert nicht</translation>
    </message>
    <message>
        <source>%1 is no frontend module: %2</source>
        <translation>%1 ist kein Frontend-Modul: %2</translation>
    </message>
</context>
<context>
    <name>SnapshotDiffDialog</name>
    <message>
        <source>Restore %1</source>
        <translation>%1 wiederherstellen</translation>
    </message>
    <message>
        <source>Compare %1</source>
        <translation>%1 vergleichen</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Setting</source>
        <translation>Einstellung</translation>
    </message>
    <message>
        <source>Snapshot</source>
        <translation>Sicherung</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>system</source>
        <translation>System</translation>
    </message>
    <message>
        <source>camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>present</source>
        <translation>vorhanden</translation>
    </message>
    <message>
        <source>(absent)</source>
        <translation>(fehlt)</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
</context>
<context>
    <name>SnapshotMenu</name>
    <message>
        <source>S&amp;napshots</source>
        <translation>S&amp;icherungen</translation>
    </message>
    <message>
        <source>&amp;Save snapshot...</source>
        <translation>Sicherung &amp;speichern...</translation>
    </message>
    <message>
        <source>Save the settings of every camera to a file</source>
        <translation>Die Einstellungen aller Kameras in einer Datei sichern</translation>
    </message>
    <message>
        <source>&amp;Compare with snapshot...</source>
        <translation>Mit Sicherung &amp;vergleichen...</translation>
    </message>
    <message>
        <source>Show what differs between a snapshot and the controller</source>
        <translation>Zeigen, was sich zwischen einer Sicherung und dem Controller unterscheidet</translation>
    </message>
    <message>
        <source>&amp;Restore snapshot...</source>
        <translation>Sicherung &amp;wiederherstellen...</translation>
    </message>
    <message>
        <source>Write a snapshot&apos;s settings back to the controller after showing what changes</source>
        <translation>Die Einstellungen einer Sicherung zum Controller zurückschreiben, nachdem die Änderungen gezeigt wurden</translation>
    </message>
    <message>
        <source>Snapshot</source>
        <translation>Sicherung</translation>
    </message>
    <message>
        <source>Cannot read the controller: %1</source>
        <translation>Der Controller kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>Cannot write %1</source>
        <translation>%1 kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>Saved %1 of %2 to %3.</source>
        <translation>%1 des Systems %2 in %3 gesichert.</translation>
    </message>
    <message>
        <source>camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Left out:</source>
        <translation>Ausgelassen:</translation>
    </message>
    <message>
        <source>The controller matches %1.</source>
        <translation>Der Controller stimmt mit %1 überein.</translation>
    </message>
    <message>
        <source>%1 is a snapshot of a %2 system, the controller is a %3 system; nothing was written.</source>
        <translation>%1 ist eine Sicherung eines %2-Systems, der Controller ist ein %3-System; es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>Snapshot restored</source>
        <translation>Sicherung wiederhergestellt</translation>
    </message>
    <message>
        <source>Snapshot not fully restored</source>
        <translation>Sicherung nicht vollständig wiederhergestellt</translation>
    </message>
</context>
</TS>
