<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Alerts</name>
    <message>
        <source>Unsupport format: %1 bits per channel, %2 sample rate, %3 channels per frame, flags: %4</source>
        <translation>Format nicht unterstützt: %1 Bit pro Kanal, Abtastrate %2, %3 Kanäle pro Frame, Flags: %4</translation>
    </message>
    <message>
        <source>Failed to start record.</source>
        <translation>Die Aufnahme konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Need to access the %1</source>
        <translation>Zugriff erforderlich: %1</translation>
    </message>
    <message>
        <source>microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Before continue, you must granted to access %1. Go to &quot;Apple-&gt;System Preferences...-&gt;Security &amp; Privacy-&gt;Privacy-&gt;%2&quot; to set, and then relaunch.</source>
        <translation>Bitte erlauben Sie zuerst diesen Zugriff: %1. Öffnen Sie dazu „Apple-&gt;Systemeinstellungen ...-&gt;Sicherheit &amp; Datenschutz-&gt;Datenschutz-&gt;%2“ und starten Sie das Programm danach neu.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>Ordner für Ihre Aufnahmen auswählen</translation>
    </message>
</context>
<context>
    <name>ConfigureSheet</name>
    <message>
        <source>Encoder</source>
        <translation>Encoder</translation>
    </message>
</context>
<context>
    <name>EncoderForm</name>
    <message>
        <source>Bitrate</source>
        <translation>Bitrate</translation>
    </message>
    <message>
        <source>Bitrate target</source>
        <translation>Ziel: Bitrate</translation>
    </message>
    <message>
        <source>Aim at a bitrate (Alt+B)</source>
        <translation>Eine Bitrate anstreben (Alt+B)</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message>
        <source>Quality target</source>
        <translation>Ziel: Qualität</translation>
    </message>
    <message>
        <source>Aim at a quality (Alt+Q)</source>
        <translation>Eine Qualität anstreben (Alt+Q)</translation>
    </message>
    <message>
        <source>0 sounds best, 9.999 makes the smallest file</source>
        <translation>0 klingt am besten, 9,999 ergibt die kleinste Datei</translation>
    </message>
    <message>
        <source>Quality value</source>
        <translation>Qualitätswert</translation>
    </message>
    <message>
        <source>Kilobits for each second of sound</source>
        <translation>Kilobit für jede Sekunde Ton</translation>
    </message>
    <message>
        <source>Bitrate value</source>
        <translation>Bitratenwert</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>Auf konstante Bitrate beschränken</translation>
    </message>
    <message>
        <source>The same bitrate for all of the recording, instead of an average (Alt+R)</source>
        <translation>Dieselbe Bitrate für die ganze Aufnahme statt eines Mittelwerts (Alt+R)</translation>
    </message>
    <message>
        <source>Engine</source>
        <translation>Encoder</translation>
    </message>
    <message>
        <source>Engine quality</source>
        <translation>Qualität des Encoders</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>VBR mode</source>
        <translation>VBR-Modus</translation>
    </message>
    <message>
        <source>high</source>
        <translation>hoch</translation>
    </message>
    <message>
        <source>standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>fast</source>
        <translation>schnell</translation>
    </message>
    <message>
        <source>%1kbps</source>
        <translation>%1&#xa0;kbit/s</translation>
    </message>
    <message>
        <source>How much time the encoder takes (Alt+E)</source>
        <translation>Wie viel Zeit sich der Encoder nimmt (Alt+E)</translation>
    </message>
    <message>
        <source>How the encoder varies the bitrate (Alt+V)</source>
        <translation>Wie der Encoder die Bitrate verändert (Alt+V)</translation>
    </message>
    <message>
        <source>Alt+B</source>
        <translation>Alt+B</translation>
    </message>
    <message>
        <source>Alt+Q</source>
        <translation>Alt+Q</translation>
    </message>
    <message>
        <source>Alt+R</source>
        <translation>Alt+R</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>Alt+V</source>
        <translation>Alt+V</translation>
    </message>
</context>
<context>
    <name>HBPreferencesWndCtrl</name>
    <message>
        <source>Recordings are saved in</source>
        <translation>Ordner für Aufnahmen</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Auswählen …</translation>
    </message>
    <message>
        <source>Choose folder</source>
        <translation>Ordner auswählen</translation>
    </message>
    <message>
        <source>Choose the folder for recordings (Alt+C)</source>
        <translation>Den Ordner für Aufnahmen auswählen (Alt+C)</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>Show folder</source>
        <translation>Ordner anzeigen</translation>
    </message>
    <message>
        <source>Show the folder in the file manager (Alt+S)</source>
        <translation>Den Ordner in der Dateiverwaltung anzeigen (Alt+S)</translation>
    </message>
    <message>
        <source>Working folder</source>
        <translation>Arbeitsordner</translation>
    </message>
    <message>
        <source>Show each recording in the file manager</source>
        <translation>Jede Aufnahme in der Dateiverwaltung anzeigen</translation>
    </message>
    <message>
        <source>When a recording has been stopped (Alt+F)</source>
        <translation>Sobald eine Aufnahme gestoppt wurde (Alt+F)</translation>
    </message>
    <message>
        <source>Recording estimate</source>
        <translation>Schätzung für Aufnahmen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Back to the recorder (Esc)</source>
        <translation>Zurück zum Rekorder (Esc)</translation>
    </message>
    <message>
        <source>Please select a location to save the recording</source>
        <translation>Bitte wählen Sie einen Ort für die Aufnahmen</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>Auf konstante Bitrate beschränken</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message>
        <source>Bitrate</source>
        <translation>Bitrate</translation>
    </message>
    <message>
        <source>Waiting for the disk of %1</source>
        <translation>Warten auf den Datenträger von %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>two sentences</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>Waiting for the disk.</source>
        <translation>Warten auf den Datenträger.</translation>
    </message>
    <message>
        <source>The folder is gone.</source>
        <translation>Der Ordner ist nicht mehr da.</translation>
    </message>
    <message>
        <source>This is not a folder.</source>
        <translation>Das ist kein Ordner.</translation>
    </message>
    <message>
        <source>The folder is not writable.</source>
        <translation>Der Ordner ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>Ordner für Ihre Aufnahmen auswählen</translation>
    </message>
    <message>
        <source>Alt+C</source>
        <translation>Alt+C</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>Alt+F</source>
        <translation>Alt+F</translation>
    </message>
</context>
<context>
    <name>Herald</name>
    <message>
        <source>Stopped. %1</source>
        <translation>Gestoppt. %1</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Gestoppt</translation>
    </message>
</context>
<context>
    <name>KTMP3ConfigureWndCtrl</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>Schließen (Esc)</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Input level</source>
        <translation>Eingangspegel</translation>
    </message>
</context>
<context>
    <name>MainCard</name>
    <message>
        <source>No input device</source>
        <translation>Kein Eingabegerät</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>a command and its key</comment>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Elapsed time</source>
        <translation>Verstrichene Zeit</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Input device</source>
        <translation>Eingabegerät</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Wiedergeben</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufnehmen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Output file</source>
        <translation>Ausgabedatei</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Im Ordner anzeigen</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Ctrl+Space</source>
        <translation>Ctrl+Space</translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation>Ctrl+P</translation>
    </message>
    <message>
        <source>Ctrl+.</source>
        <translation>Ctrl+.</translation>
    </message>
    <message>
        <source>Ctrl+Shift+R</source>
        <translation>Ctrl+Shift+R</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
</context>
<context>
    <name>PreferencesCard</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>Cannot record: %1</source>
        <translation>Aufnahme nicht möglich: %1</translation>
    </message>
    <message>
        <source>Cannot play %1: %2</source>
        <translation>%1 nicht abspielbar: %2</translation>
    </message>
</context>
<context>
    <name>PulseStream</name>
    <message>
        <source>Recording</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Wiedergabe</translation>
    </message>
</context>
<context>
    <name>Reason</name>
    <message>
        <source>this many bits a sample are not supported: %1</source>
        <translation>diese Zahl von Bits pro Abtastwert wird nicht unterstützt: %1</translation>
    </message>
    <message>
        <source>the file cannot be opened</source>
        <translation>die Datei lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>it is being recorded from already</source>
        <translation>von diesem Gerät wird schon aufgenommen</translation>
    </message>
    <message>
        <source>a folder is being chosen already</source>
        <translation>ein Ordner wird gerade schon gewählt</translation>
    </message>
    <message>
        <source>there is no such device</source>
        <translation>dieses Gerät gibt es nicht</translation>
    </message>
    <message>
        <source>something else than linear PCM is asked for</source>
        <translation>etwas anderes als lineares PCM wird verlangt</translation>
    </message>
    <message>
        <source>there is no room for a thread</source>
        <translation>kein Platz für einen weiteren Thread</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>die Datei fehlt</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>no MPEG audio in it</source>
        <translation>kein MPEG-Audio darin</translation>
    </message>
    <message>
        <source>the disk does not answer</source>
        <translation>der Datenträger antwortet nicht</translation>
    </message>
    <message>
        <source>the sound server does not answer</source>
        <translation>der Soundserver antwortet nicht</translation>
    </message>
    <message>
        <source>there is no room for a connection to the sound server</source>
        <translation>kein Platz für eine Verbindung zum Soundserver</translation>
    </message>
    <message>
        <source>Access denied</source>
        <translation>Zugriff verweigert</translation>
    </message>
    <message>
        <source>Connection refused</source>
        <translation>Verbindung abgelehnt</translation>
    </message>
    <message>
        <source>Connection terminated</source>
        <translation>Verbindung beendet</translation>
    </message>
    <message>
        <source>No such entity</source>
        <translation>nicht vorhanden</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>Zeitüberschreitung</translation>
    </message>
    <message>
        <source>there is no sound server: %1</source>
        <translation>kein Soundserver: %1</translation>
    </message>
    <message>
        <source>the sound server makes no progress</source>
        <translation>der Soundserver kommt nicht voran</translation>
    </message>
    <message>
        <source>the stream cannot be made: %1</source>
        <translation>kein Tonstrom: %1</translation>
    </message>
    <message>
        <source>the stream cannot be connected: %1</source>
        <translation>Tonstrom ohne Verbindung: %1</translation>
    </message>
    <message>
        <source>the sound server says: %1</source>
        <translation>der Soundserver meldet: %1</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>the quota is used up</source>
        <translation>das Kontingent ist aufgebraucht</translation>
    </message>
    <message>
        <source>the file is too large for this disk</source>
        <translation>die Datei ist zu groß für diesen Datenträger</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>der Datenträger ist schreibgeschützt</translation>
    </message>
    <message>
        <source>the folder is not writable</source>
        <translation>der Ordner ist schreibgeschützt</translation>
    </message>
    <message>
        <source>the folder is gone</source>
        <translation>der Ordner ist nicht mehr da</translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation>der Datenträger meldet einen Fehler</translation>
    </message>
    <message>
        <source>another program writes this file</source>
        <translation>ein anderes Programm schreibt die Datei</translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation>zu viele Dateien sind geöffnet</translation>
    </message>
    <message>
        <source>the computer is out of memory</source>
        <translation>der Arbeitsspeicher ist erschöpft</translation>
    </message>
</context>
<context>
    <name>RecordingEstimate</name>
    <message>
        <source>About %1 MB an hour.</source>
        <translation>Etwa %1&#xa0;MB pro Stunde.</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: %2 MB an hour.</source>
        <translation>Beim Start setzt eine Aufnahme die Bitrate auf %1&#xa0;kbit/s: %2&#xa0;MB pro Stunde.</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: about %2 MB an hour.</source>
        <translation>Beim Start setzt eine Aufnahme die Bitrate auf %1&#xa0;kbit/s: etwa %2&#xa0;MB pro Stunde.</translation>
    </message>
    <message>
        <source>This disk is full.</source>
        <translation>Dieser Datenträger ist voll.</translation>
    </message>
    <message>
        <source>1 minute fits on this disk.</source>
        <translation>Platz für 1 Minute.</translation>
    </message>
    <message numerus="yes">
        <source>%1 minutes fit on this disk.</source>
        <translation>
            <numerusform>Platz für %1 Minute.</numerusform>
            <numerusform>Platz für %1 Minuten.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour fits on this disk.</source>
        <translation>Platz für 1 Stunde.</translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <comment>less than ten, with a decimal</comment>
        <translation>
            <numerusform>Platz für %1 Stunden.</numerusform>
            <numerusform>Platz für %1 Stunden.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <translation>
            <numerusform>Platz für %1 Stunde.</numerusform>
            <numerusform>Platz für %1 Stunden.</numerusform>
        </translation>
    </message>
    <message>
        <source>Whatever bitrate is chosen here, a recording takes the highest.
A quality target makes smaller files.</source>
        <translation>Welche Bitrate hier auch gewählt ist: Eine Aufnahme nimmt die höchste.
Eine Qualität als Ziel ergibt kleinere Dateien.</translation>
    </message>
    <message>
        <source>With a quality target the size depends on the sound:
music needs most, speech and silence less.</source>
        <translation>Mit einer Qualität als Ziel hängt die Größe vom Ton ab:
Musik braucht am meisten, Sprache und Stille weniger.</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>the computer was asleep</source>
        <translation>der Computer hat geschlafen</translation>
    </message>
    <message>
        <source>the sound server stood still</source>
        <translation>der Soundserver stand still</translation>
    </message>
    <message>
        <source>the computer was busy</source>
        <translation>der Computer war ausgelastet</translation>
    </message>
    <message>
        <source>%1 was away</source>
        <translation>%1 war nicht da</translation>
    </message>
    <message>
        <source>Recording from %1</source>
        <translation>Aufnahme von %1</translation>
    </message>
    <message>
        <source>Paused, recording from %1</source>
        <translation>Pausiert, Aufnahme von %1</translation>
    </message>
    <message>
        <source>Playing %1</source>
        <translation>Wiedergabe von %1</translation>
    </message>
    <message>
        <source>Paused, playing %1</source>
        <translation>Pausiert, Wiedergabe von %1</translation>
    </message>
    <message>
        <source>No input device</source>
        <translation>Kein Eingabegerät</translation>
    </message>
    <message>
        <source>Input device is now %1</source>
        <translation>Eingabegerät ist jetzt %1</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Waiting for a folder to be chosen</source>
        <translation>Wartet auf die Wahl eines Ordners</translation>
    </message>
    <message>
        <source>Nothing opens %1</source>
        <translation>Kein Programm öffnet %1</translation>
    </message>
</context>
<context>
    <name>TakeHandle</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Im Ordner anzeigen</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Pfad kopieren</translation>
    </message>
</context>
<context>
    <name>TitleStrip</name>
    <message>
        <source>Minimise</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>Troubles</name>
    <message>
        <source>less than a minute</source>
        <translation>weniger als eine Minute</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1 Minute</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n Minute</numerusform>
            <numerusform>%n Minuten</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 min %2 s</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 nicht geschrieben: %2</translation>
    </message>
    <message>
        <source>the disk was too slow</source>
        <translation>der Datenträger war zu langsam</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>Datenträger antwortet nicht</translation>
    </message>
    <message>
        <source>The folder is gone</source>
        <translation>Der Ordner ist nicht mehr da</translation>
    </message>
    <message>
        <source>The file is gone</source>
        <translation>Die Datei ist nicht mehr da</translation>
    </message>
    <message>
        <source>The disk is full</source>
        <translation>Der Datenträger ist voll</translation>
    </message>
    <message>
        <source>No sound is arriving from %1</source>
        <translation>Kein Ton kommt an von %1</translation>
    </message>
    <message>
        <source>The file cannot be written</source>
        <translation>Die Datei kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>%1 is muted</source>
        <translation>%1 ist stummgeschaltet</translation>
    </message>
    <message>
        <source>The disk is nearly full: %1 left</source>
        <translation>Der Datenträger ist fast voll: noch %1</translation>
    </message>
    <message>
        <source>Only silence from %1</source>
        <translation>Nur Stille von %1</translation>
    </message>
    <message>
        <source>%1 are missing: %2</source>
        <translation>Es fehlen %1: %2</translation>
    </message>
    <message>
        <source>%1: %2 are safe in memory</source>
        <translation>%1: %2 sicher im Speicher</translation>
    </message>
</context>
<context>
    <name>WindowTitle</name>
    <message>
        <source>Recording %1 - %2</source>
        <translation>Aufnahme %1 - %2</translation>
    </message>
    <message>
        <source>Paused %1 - %2</source>
        <translation>Pausiert %1 - %2</translation>
    </message>
    <message>
        <source>Playing - %1</source>
        <translation>Wiedergabe - %1</translation>
    </message>
    <message>
        <source>Playback paused - %1</source>
        <translation>Wiedergabe pausiert - %1</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Recording sound</source>
        <translation>Ton wird aufgenommen</translation>
    </message>
</context>
</TS>
