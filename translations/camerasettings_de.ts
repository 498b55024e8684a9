<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>CameraSettingsDialog</name>
    <message>
        <source>Camera Settings</source>
        <translation>Kameraeinstellungen</translation>
    </message>
    <message>
        <source>Camera settings dialog</source>
        <translation>Dialog der Kameraeinstellungen</translation>
    </message>
    <message>
        <source>Tab 1</source>
        <translation>Registerkarte 1</translation>
    </message>
    <message>
        <source>Tab 2</source>
        <translation>Registerkarte 2</translation>
    </message>
    <message>
        <source>&amp;flash intensity:</source>
        <translation>&amp;Blitzintensität:</translation>
    </message>
    <message>
        <source>no flash</source>
        <translation>kein Blitz</translation>
    </message>
    <message>
        <source>Adjust the flash intensity</source>
        <translation>Blitzintensität einstellen</translation>
    </message>
    <message>
        <source>max. flash</source>
        <translation>max. Blitz</translation>
    </message>
    <message>
        <source>&amp;static reflex suppression</source>
        <translation>&amp;Statische Reflexunterdrückung</translation>
    </message>
    <message>
        <source>Use modulated flash</source>
        <translation>Modulierten Blitz verwenden</translation>
    </message>
    <message>
        <source>&amp;modulated flash</source>
        <translation>&amp;Modulierter Blitz</translation>
    </message>
    <message>
        <source>Show or hide the details of camera info</source>
        <translation>Details der Kamerainformationen ein- oder ausblenden</translation>
    </message>
    <message>
        <source>Show &amp;details</source>
        <translation>&amp;Details anzeigen</translation>
    </message>
    <message>
        <source>Alt+D</source>
        <translation>Alt+D</translation>
    </message>
    <message>
        <source>Accept changes and close dialog</source>
        <translation>Änderungen übernehmen und Dialog schließen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Discard changes and close dialog</source>
        <translation>Änderungen verwerfen und Dialog schließen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CameraSettingsDlg</name>
    <message>
        <source>Cameras have the modulated flash activated but no flash intensity.
Active targets will not work properly.</source>
        <translation>Bei Kameras ist der modulierte Blitz eingeschaltet, aber keine Blitzintensität eingestellt.
Aktive Targets arbeiten so nicht richtig.</translation>
    </message>
    <message>
        <source>Camera c%1 has the modulated flash activated but no flash intensity.
Active targets will not work properly.</source>
        <translation>Bei Kamera c%1 ist der modulierte Blitz eingeschaltet, aber keine Blitzintensität eingestellt.
Aktive Targets arbeiten so nicht richtig.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Continue?</source>
        <translation>Fortfahren?</translation>
    </message>
    <message>
        <source>Modulated flash configured for sync group #2 or #3.
For compatibility with active markers by Ostrel.
activate modulated flash for cameras in syncgroup #1 only!</source>
        <translation>Modulierter Blitz für Sync-Gruppe #2 oder #3 eingestellt.
Für die Verträglichkeit mit aktiven Markern von Ostrel
den modulierten Blitz nur für Kameras in Sync-Gruppe #1 einschalten!</translation>
    </message>
    <message>
        <source>Are you sure you want to continue?</source>
        <translation>Wirklich fortfahren?</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Serial</source>
        <translation>Seriennr.</translation>
    </message>
    <message>
        <source>Flash intensity</source>
        <translation>Blitzintensität</translation>
    </message>
    <message>
        <source>MaxFlash</source>
        <translation>Max. Blitz</translation>
    </message>
    <message>
        <source>HasModFlash</source>
        <translation>Mod. Blitz vorhanden</translation>
    </message>
    <message>
        <source>Mod. flash</source>
        <translation>Mod. Blitz</translation>
    </message>
    <message>
        <source>Static reflex suppr.</source>
        <translation>Stat. Reflexunterdr.</translation>
    </message>
    <message>
        <source>Dyn. reflex suppr.</source>
        <translation>Dyn. Reflexunterdr.</translation>
    </message>
    <message>
        <source>CameraOrientation</source>
        <translation>Kameraausrichtung</translation>
    </message>
    <message>
        <source>Has static reflex suppr.</source>
        <translation>Stat. Reflexunterdr. vorhanden</translation>
    </message>
    <message>
        <source>Has dyn. reflex suppr.</source>
        <translation>Dyn. Reflexunterdr. vorhanden</translation>
    </message>
    <message>
        <source>Marker mode</source>
        <translation>Markermodus</translation>
    </message>
    <message>
        <source>Marker max number</source>
        <translation>Max. Markeranzahl</translation>
    </message>
    <message>
        <source>Marker max size</source>
        <translation>Max. Markergröße</translation>
    </message>
    <message>
        <source>Marker min size</source>
        <translation>Min. Markergröße</translation>
    </message>
    <message>
        <source>Sync group</source>
        <translation>Sync-Gruppe</translation>
    </message>
    <message>
        <source>Cascaded System</source>
        <translation>Kaskadiertes System</translation>
    </message>
    <message>
        <source>Marker size limit</source>
        <translation>Grenze der Markergröße</translation>
    </message>
    <message>
        <source>Chipsize</source>
        <translation>Chipgröße</translation>
    </message>
    <message>
        <source>Has camera mode</source>
        <translation>Kameramodus vorhanden</translation>
    </message>
    <message>
        <source>Camera mode data</source>
        <translation>Kameramodusdaten</translation>
    </message>
    <message>
        <source>Camera mode</source>
        <translation>Kameramodus</translation>
    </message>
    <message>
        <source>Has display intensity</source>
        <translation>Displayhelligkeit vorhanden</translation>
    </message>
    <message>
        <source>Display intensity</source>
        <translation>Displayhelligkeit</translation>
    </message>
    <message>
        <source>Has display mode</source>
        <translation>Displaymodus vorhanden</translation>
    </message>
    <message>
        <source>Display mode</source>
        <translation>Displaymodus</translation>
    </message>
    <message>
        <source>Room cal</source>
        <translation>Raumkal.</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <source>Has marker threshold</source>
        <translation>Markerschwelle vorhanden</translation>
    </message>
    <message>
        <source>Marker threshold</source>
        <translation>Markerschwelle</translation>
    </message>
    <message>
        <source>Sensor gain</source>
        <translation>Sensorverstärkung</translation>
    </message>
    <message>
        <source>Has sensor gain</source>
        <translation>Sensorverstärkung vorhanden</translation>
    </message>
    <message>
        <source>Has exposure time</source>
        <translation>Belichtungszeit vorhanden</translation>
    </message>
    <message>
        <source>Exposure time</source>
        <translation>Belichtungszeit</translation>
    </message>
    <message>
        <source>Auto exposure time</source>
        <translation>Automatische Belichtung</translation>
    </message>
    <message>
        <source>Has ring display intensity</source>
        <translation>Ringdisplayhelligkeit vorhanden</translation>
    </message>
    <message>
        <source>Ring display intensity</source>
        <translation>Ringdisplayhelligkeit</translation>
    </message>
</context>
<context>
    <name>CameraSettingsModule</name>
    <message>
        <source>GUI Camera Settings</source>
        <translation>GUI Kameraeinstellungen</translation>
    </message>
    <message>
        <source>H&amp;ardware</source>
        <translation>H&amp;ardware</translation>
    </message>
    <message>
        <source>C&amp;ameras</source>
        <translation>K&amp;ameras</translation>
    </message>
    <message>
        <source>F7</source>
        <translation>F7</translation>
    </message>
    <message>
        <source>Change camera settings</source>
        <translation>Kameraeinstellungen ändern</translation>
    </message>
</context>
<context>
    <name>CameraWdg</name>
    <message>
        <source>unknown (master/slave)</source>
        <translation>unbekannt (Master/Slave)</translation>
    </message>
    <message>
        <source>master of Cascaded System</source>
        <translation>Master des kaskadierten Systems</translation>
    </message>
    <message>
        <source>slave of Cascaded System (%1 %2)</source>
        <translation>Slave des kaskadierten Systems (%1 %2)</translation>
    </message>
</context>
<context>
    <name>CameraWidget</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Camera settings</source>
        <translation>Kameraeinstellungen</translation>
    </message>
    <message>
        <source>Your Ostrel Camera</source>
        <translation>Ihre Ostrel-Kamera</translation>
    </message>
    <message>
        <source>model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>modelString</source>
        <translation>Modellbezeichnung</translation>
    </message>
    <message>
        <source>serial</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>Textfeld</translation>
    </message>
    <message>
        <source>version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>focal length [mm]</source>
        <translation>Brennweite [mm]</translation>
    </message>
    <message>
        <source>connected at</source>
        <translation>angeschlossen an</translation>
    </message>
    <message>
        <source>Adjust the flash intensity of the camera</source>
        <translation>Blitzintensität der Kamera einstellen</translation>
    </message>
    <message>
        <source>&amp;flash intensity</source>
        <translation>&amp;Blitzintensität</translation>
    </message>
    <message>
        <source>Set static reflex suppression</source>
        <translation>Statische Reflexunterdrückung einschalten</translation>
    </message>
    <message>
        <source>&amp;static reflex suppression</source>
        <translation>&amp;Statische Reflexunterdrückung</translation>
    </message>
    <message>
        <source>Set dynamic reflex suppression</source>
        <translation>Dynamische Reflexunterdrückung einschalten</translation>
    </message>
    <message>
        <source>&amp;dynamic reflex suppression</source>
        <translation>&amp;Dynamische Reflexunterdrückung</translation>
    </message>
    <message>
        <source>&amp;camera mode</source>
        <translation>&amp;Kameramodus</translation>
    </message>
    <message>
        <source>Toggle display upside down</source>
        <translation>Anzeige des Displays umdrehen</translation>
    </message>
    <message>
        <source>display &amp;upside down</source>
        <translation>Display &amp;umgedreht</translation>
    </message>
    <message>
        <source>display &amp;intensity</source>
        <translation>Display&amp;helligkeit</translation>
    </message>
    <message>
        <source>0%</source>
        <translation>0 %</translation>
    </message>
    <message>
        <source>dis&amp;play mode</source>
        <translation>Dis&amp;playmodus</translation>
    </message>
    <message>
        <source>&amp;ring display intensity</source>
        <translation>&amp;Ringdisplayhelligkeit</translation>
    </message>
    <message>
        <source>Select sync group</source>
        <translation>Sync-Gruppe auswählen</translation>
    </message>
    <message>
        <source>s&amp;ync group</source>
        <translation>S&amp;ync-Gruppe</translation>
    </message>
    <message>
        <source>Set modulated flash</source>
        <translation>Modulierten Blitz einschalten</translation>
    </message>
    <message>
        <source>&amp;modulated flash</source>
        <translation>&amp;Modulierter Blitz</translation>
    </message>
    <message>
        <source>Adjust the marker mode</source>
        <translation>Markermodus einstellen</translation>
    </message>
    <message>
        <source>marker m&amp;ode</source>
        <translation>Markerm&amp;odus</translation>
    </message>
    <message>
        <source>Adjust the maximum number of markers</source>
        <translation>Höchstzahl der Marker einstellen</translation>
    </message>
    <message>
        <source>ma&amp;ximum number of markers</source>
        <translation>Ma&amp;ximale Anzahl der Marker</translation>
    </message>
    <message>
        <source>Adjust the maximum diameter of markers in percent according to the chip size</source>
        <translation>Größten Markerdurchmesser in Prozent der Chipgröße einstellen</translation>
    </message>
    <message>
        <source>m&amp;aximum diameter of marker</source>
        <translation>M&amp;aximaler Markerdurchmesser</translation>
    </message>
    <message>
        <source>[%] according to chip size</source>
        <translation>[%] der Chipgröße</translation>
    </message>
    <message>
        <source>Adjust the minimum diameter of markers [pixel]</source>
        <translation>Kleinsten Markerdurchmesser einstellen [Pixel]</translation>
    </message>
    <message>
        <source>m&amp;inimum diameter of marker</source>
        <translation>M&amp;inimaler Markerdurchmesser</translation>
    </message>
    <message>
        <source>[pixel]</source>
        <translation>[Pixel]</translation>
    </message>
    <message>
        <source>Adjust marker threshold</source>
        <translation>Markerschwelle einstellen</translation>
    </message>
    <message>
        <source>marker &amp;threshold</source>
        <translation>Markersch&amp;welle</translation>
    </message>
    <message>
        <source>10 %</source>
        <translation>10 %</translation>
    </message>
    <message>
        <source>Set marker threshold to default</source>
        <translation>Markerschwelle auf den Standardwert setzen</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>sensor &amp;gain</source>
        <translation>Sensor&amp;verstärkung</translation>
    </message>
    <message>
        <source>1,0</source>
        <translation>1,0</translation>
    </message>
    <message>
        <source>Adjust exposure time</source>
        <translation>Belichtungszeit einstellen</translation>
    </message>
    <message>
        <source>expos&amp;ure time</source>
        <translation>Belich&amp;tungszeit</translation>
    </message>
    <message>
        <source>0 us</source>
        <translation>0 µs</translation>
    </message>
    <message>
        <source>Set exposure time to default</source>
        <translation>Belichtungszeit auf den Standardwert setzen</translation>
    </message>
    <message>
        <source>Activate automatic exposure control</source>
        <translation>Automatische Belichtungsregelung einschalten</translation>
    </message>
    <message>
        <source>automatic &amp;exposure control</source>
        <translation>Automatische B&amp;elichtungsregelung</translation>
    </message>
</context>
<context>
    <name>OverviewWidget</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>List of all cameras</source>
        <translation>Liste aller Kameras</translation>
    </message>
    <message>
        <source>This allows setting the flash intensity for all cameras together</source>
        <translation>Stellt die Blitzintensität aller Kameras gemeinsam ein</translation>
    </message>
    <message>
        <source>&amp;global flash intensity </source>
        <translation>&amp;Globale Blitzintensität </translation>
    </message>
    <message>
        <source>This adjusts the flash intensity for all cameras between &apos;flash off&apos; and &apos;maximum flash&apos;. The exact values depend on the maximum flash intensity of your cameras and will be calculated automatically. </source>
        <translation>Stellt die Blitzintensität aller Kameras zwischen &apos;Blitz aus&apos; und &apos;maximaler Blitz&apos; ein. Die genauen Werte hängen von der maximalen Blitzintensität Ihrer Kameras ab und werden automatisch berechnet. </translation>
    </message>
    <message>
        <source>no flash</source>
        <translation>kein Blitz</translation>
    </message>
    <message>
        <source>&lt;!DOCTYPE HTML PUBLIC &quot;-//W3C//DTD HTML 4.0//EN&quot; &quot;http://www.w3.org/TR/REC-html40/strict.dtd&quot;&gt;
&lt;html&gt;&lt;head&gt;&lt;meta name=&quot;qrichtext&quot; content=&quot;1&quot; /&gt;&lt;style type=&quot;text/css&quot;&gt;
p, li { white-space: pre-wrap; }
&lt;/style&gt;&lt;/head&gt;&lt;body style=&quot; font-family:&apos;MS Shell Dlg 2&apos;; font-size:8.25pt; font-weight:400; font-style:normal;&quot;&gt;
&lt;p style=&quot; margin-top:0px; margin-bottom:0px; margin-left:0px; margin-right:0px; -qt-block-indent:0; text-indent:0px;&quot;&gt;&lt;span style=&quot; font-size:8pt;&quot;&gt;This adjusts the flash intensity for all cameras between &apos;flash off&apos; and &apos;maximum flash&apos;. The exact values depend on the maximum flash intensity of your cameras and will be calculated automatically. &lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;!DOCTYPE HTML PUBLIC &quot;-//W3C//DTD HTML 4.0//EN&quot; &quot;http://www.w3.org/TR/REC-html40/strict.dtd&quot;&gt;
&lt;html&gt;&lt;head&gt;&lt;meta name=&quot;qrichtext&quot; content=&quot;1&quot; /&gt;&lt;style type=&quot;text/css&quot;&gt;
p, li { white-space: pre-wrap; }
&lt;/style&gt;&lt;/head&gt;&lt;body style=&quot; font-family:&apos;MS Shell Dlg 2&apos;; font-size:8.25pt; font-weight:400; font-style:normal;&quot;&gt;
&lt;p style=&quot; margin-top:0px; margin-bottom:0px; margin-left:0px; margin-right:0px; -qt-block-indent:0; text-indent:0px;&quot;&gt;&lt;span style=&quot; font-size:8pt;&quot;&gt;Stellt die Blitzintensität aller Kameras zwischen &apos;Blitz aus&apos; und &apos;maximaler Blitz&apos; ein. Die genauen Werte hängen von der maximalen Blitzintensität Ihrer Kameras ab und werden automatisch berechnet. &lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>max. flash</source>
        <translation>max. Blitz</translation>
    </message>
    <message>
        <source>Set static reflex suppression for all cameras</source>
        <translation>Statische Reflexunterdrückung für alle Kameras einschalten</translation>
    </message>
    <message>
        <source>&amp;static reflex suppression</source>
        <translation>&amp;Statische Reflexunterdrückung</translation>
    </message>
    <message>
        <source>Set dynamic reflex suppression for all cameras</source>
        <translation>Dynamische Reflexunterdrückung für alle Kameras einschalten</translation>
    </message>
    <message>
        <source>&amp;dynamic reflex suppression</source>
        <translation>&amp;Dynamische Reflexunterdrückung</translation>
    </message>
    <message>
        <source>global &amp;camera mode</source>
        <translation>Globaler &amp;Kameramodus</translation>
    </message>
    <message>
        <source>global display &amp;intensity</source>
        <translation>Globale Display&amp;helligkeit</translation>
    </message>
    <message>
        <source>0%</source>
        <translation>0 %</translation>
    </message>
    <message>
        <source>global dis&amp;play mode</source>
        <translation>Globaler Dis&amp;playmodus</translation>
    </message>
    <message>
        <source>global &amp;ring display intensity</source>
        <translation>Globale &amp;Ringdisplayhelligkeit</translation>
    </message>
    <message>
        <source>Make one camera use a modulated flash</source>
        <translation>Eine Kamera mit moduliertem Blitz betreiben</translation>
    </message>
    <message>
        <source>&amp;modulated flash</source>
        <translation>&amp;Modulierter Blitz</translation>
    </message>
    <message>
        <source>Enable adjustment of the marker mode for all cameras</source>
        <translation>Markermodus für alle Kameras einstellbar machen</translation>
    </message>
    <message>
        <source>global marker mode</source>
        <translation>Globaler Markermodus</translation>
    </message>
    <message>
        <source>Adjust the marker mode for all cameras</source>
        <translation>Markermodus für alle Kameras einstellen</translation>
    </message>
    <message>
        <source>Enable the adjustment of the maximum number of markers for all cameras</source>
        <translation>Maximale Anzahl der Marker für alle Kameras einstellbar machen</translation>
    </message>
    <message>
        <source>global maximum number of markers</source>
        <translation>Globale maximale Anzahl der Marker</translation>
    </message>
    <message>
        <source>Adjust the maximum number of markers for all cameras</source>
        <translation>Maximale Anzahl der Marker für alle Kameras einstellen</translation>
    </message>
    <message>
        <source>Enable the adjustment of the maximum diameter of markers for all cameras</source>
        <translation>Maximalen Markerdurchmesser für alle Kameras einstellbar machen</translation>
    </message>
    <message>
        <source>global maximum diameter of marker</source>
        <translation>Globaler maximaler Markerdurchmesser</translation>
    </message>
    <message>
        <source>Adjust the maximum diameter of markers for all cameras</source>
        <translation>Maximalen Markerdurchmesser für alle Kameras einstellen</translation>
    </message>
    <message>
        <source>[%] according to chip size</source>
        <translation>[%] der Chipgröße</translation>
    </message>
    <message>
        <source>Enable the adjustment of the minimum diameter of marker for all cameras</source>
        <translation>Minimalen Markerdurchmesser für alle Kameras einstellbar machen</translation>
    </message>
    <message>
        <source>global minimum diameter of marker</source>
        <translation>Globaler minimaler Markerdurchmesser</translation>
    </message>
    <message>
        <source>Adjust the minimum diameter of markers for all cameras</source>
        <translation>Minimalen Markerdurchmesser für alle Kameras einstellen</translation>
    </message>
    <message>
        <source>[pixel]</source>
        <translation>[Pixel]</translation>
    </message>
</context>
</TS>
