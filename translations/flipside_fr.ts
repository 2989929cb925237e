<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Alerts</name>
    <message>
        <source>Unsupport format: %1 bits per channel, %2 sample rate, %3 channels per frame, flags: %4</source>
        <translation>Format non pris en charge&#xa0;: %1 bits par canal, fréquence d’échantillonnage %2, %3 canaux par trame, indicateurs&#xa0;: %4</translation>
    </message>
    <message>
        <source>Failed to start record.</source>
        <translation>Impossible de démarrer l’enregistrement.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Need to access the %1</source>
        <translation>Accès requis&#xa0;: %1</translation>
    </message>
    <message>
        <source>microphone</source>
        <translation>microphone</translation>
    </message>
    <message>
        <source>Before continue, you must granted to access %1. Go to &quot;Apple-&gt;System Preferences...-&gt;Security &amp; Privacy-&gt;Privacy-&gt;%2&quot; to set, and then relaunch.</source>
        <translation>Avant de continuer, veuillez autoriser cet accès&#xa0;: %1. Ouvrez «&#xa0;Apple-&gt;Préférences Système...-&gt;Sécurité et confidentialité-&gt;Confidentialité-&gt;%2&#xa0;», puis relancez le programme.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Microphone</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>Choisissez un dossier pour vos enregistrements</translation>
    </message>
</context>
<context>
    <name>ConfigureSheet</name>
    <message>
        <source>Encoder</source>
        <translation>Encodeur</translation>
    </message>
</context>
<context>
    <name>EncoderForm</name>
    <message>
        <source>Bitrate</source>
        <translation>Débit</translation>
    </message>
    <message>
        <source>Bitrate target</source>
        <translation>Débit visé</translation>
    </message>
    <message>
        <source>Aim at a bitrate (Alt+B)</source>
        <translation>Viser un débit (Alt+B)</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualité</translation>
    </message>
    <message>
        <source>Quality target</source>
        <translation>Qualité visée</translation>
    </message>
    <message>
        <source>Aim at a quality (Alt+Q)</source>
        <translation>Viser une qualité (Alt+Q)</translation>
    </message>
    <message>
        <source>0 sounds best, 9.999 makes the smallest file</source>
        <translation>0 donne le meilleur son, 9,999 le plus petit fichier</translation>
    </message>
    <message>
        <source>Quality value</source>
        <translation>Valeur de la qualité</translation>
    </message>
    <message>
        <source>Kilobits for each second of sound</source>
        <translation>Kilobits par seconde de son</translation>
    </message>
    <message>
        <source>Bitrate value</source>
        <translation>Valeur du débit</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>Limiter l’encodeur à un débit constant</translation>
    </message>
    <message>
        <source>The same bitrate for all of the recording, instead of an average (Alt+R)</source>
        <translation>Le même débit pour tout l’enregistrement, au lieu d’une moyenne (Alt+R)</translation>
    </message>
    <message>
        <source>Engine</source>
        <translation>Moteur</translation>
    </message>
    <message>
        <source>Engine quality</source>
        <translation>Qualité du moteur</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>VBR mode</source>
        <translation>Mode VBR</translation>
    </message>
    <message>
        <source>high</source>
        <translation>élevée</translation>
    </message>
    <message>
        <source>standard</source>
        <translation>standard</translation>
    </message>
    <message>
        <source>fast</source>
        <translation>rapide</translation>
    </message>
    <message>
        <source>%1kbps</source>
        <translation>%1&#xa0;kbit/s</translation>
    </message>
    <message>
        <source>How much time the encoder takes (Alt+E)</source>
        <translation>Le temps que prend l’encodeur (Alt+E)</translation>
    </message>
    <message>
        <source>How the encoder varies the bitrate (Alt+V)</source>
        <translation>La façon dont l’encodeur fait varier le débit (Alt+V)</translation>
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
        <translation>Enregistrements dans</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Choisir…</translation>
    </message>
    <message>
        <source>Choose folder</source>
        <translation>Choisir un dossier</translation>
    </message>
    <message>
        <source>Choose the folder for recordings (Alt+C)</source>
        <translation>Choisir le dossier des enregistrements (Alt+C)</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Afficher</translation>
    </message>
    <message>
        <source>Show folder</source>
        <translation>Afficher le dossier</translation>
    </message>
    <message>
        <source>Show the folder in the file manager (Alt+S)</source>
        <translation>Afficher le dossier dans le gestionnaire de fichiers (Alt+S)</translation>
    </message>
    <message>
        <source>Working folder</source>
        <translation>Dossier de travail</translation>
    </message>
    <message>
        <source>Show each recording in the file manager</source>
        <translation>Montrer chaque enregistrement dans son dossier</translation>
    </message>
    <message>
        <source>When a recording has been stopped (Alt+F)</source>
        <translation>Quand un enregistrement vient d’être arrêté (Alt+F)</translation>
    </message>
    <message>
        <source>Recording estimate</source>
        <translation>Estimation de l’enregistrement</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Back to the recorder (Esc)</source>
        <translation>Revenir à l’enregistreur (Échap)</translation>
    </message>
    <message>
        <source>Please select a location to save the recording</source>
        <translation>Veuillez choisir où enregistrer le fichier</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>Limiter l’encodeur à un débit constant</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualité</translation>
    </message>
    <message>
        <source>Bitrate</source>
        <translation>Débit</translation>
    </message>
    <message>
        <source>Waiting for the disk of %1</source>
        <translation>En attente du disque de %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>two sentences</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>Waiting for the disk.</source>
        <translation>En attente du disque.</translation>
    </message>
    <message>
        <source>The folder is gone.</source>
        <translation>Le dossier a disparu.</translation>
    </message>
    <message>
        <source>This is not a folder.</source>
        <translation>Ce n’est pas un dossier.</translation>
    </message>
    <message>
        <source>The folder is not writable.</source>
        <translation>Le dossier est protégé en écriture.</translation>
    </message>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>Choisissez un dossier pour vos enregistrements</translation>
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
        <translation>Arrêté. %1</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Arrêté</translation>
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
        <translation>Fermer (Échap)</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Input level</source>
        <translation>Niveau d’entrée</translation>
    </message>
</context>
<context>
    <name>MainCard</name>
    <message>
        <source>No input device</source>
        <translation>Aucun périphérique d’entrée</translation>
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
        <translation>Temps écoulé</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Input device</source>
        <translation>Périphérique d’entrée</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Lire</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Output file</source>
        <translation>Fichier de sortie</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Afficher dans le dossier</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
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
        <translation>Préférences</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>Cannot record: %1</source>
        <translation>Impossible d’enregistrer&#xa0;: %1</translation>
    </message>
    <message>
        <source>Cannot play %1: %2</source>
        <translation>%1 illisible&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>PulseStream</name>
    <message>
        <source>Recording</source>
        <translation>Enregistrement</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Lecture</translation>
    </message>
</context>
<context>
    <name>Reason</name>
    <message>
        <source>this many bits a sample are not supported: %1</source>
        <translation>ce nombre de bits par échantillon n’est pas pris en charge&#xa0;: %1</translation>
    </message>
    <message>
        <source>the file cannot be opened</source>
        <translation>le fichier ne peut pas être ouvert</translation>
    </message>
    <message>
        <source>it is being recorded from already</source>
        <translation>ce périphérique enregistre déjà</translation>
    </message>
    <message>
        <source>a folder is being chosen already</source>
        <translation>un dossier est déjà en cours de choix</translation>
    </message>
    <message>
        <source>there is no such device</source>
        <translation>ce périphérique n’existe pas</translation>
    </message>
    <message>
        <source>something else than linear PCM is asked for</source>
        <translation>autre chose que du PCM linéaire est demandé</translation>
    </message>
    <message>
        <source>there is no room for a thread</source>
        <translation>plus de place pour un fil d’exécution</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>introuvable</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>ce n’est pas un fichier ordinaire</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>le fichier est vide</translation>
    </message>
    <message>
        <source>no MPEG audio in it</source>
        <translation>sans audio MPEG</translation>
    </message>
    <message>
        <source>the disk does not answer</source>
        <translation>le disque ne répond pas</translation>
    </message>
    <message>
        <source>the sound server does not answer</source>
        <translation>le serveur de son ne répond pas</translation>
    </message>
    <message>
        <source>there is no room for a connection to the sound server</source>
        <translation>plus de place pour se connecter au serveur de son</translation>
    </message>
    <message>
        <source>Access denied</source>
        <translation>accès refusé</translation>
    </message>
    <message>
        <source>Connection refused</source>
        <translation>connexion refusée</translation>
    </message>
    <message>
        <source>Connection terminated</source>
        <translation>connexion interrompue</translation>
    </message>
    <message>
        <source>No such entity</source>
        <translation>élément introuvable</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>délai dépassé</translation>
    </message>
    <message>
        <source>there is no sound server: %1</source>
        <translation>pas de serveur de son&#xa0;: %1</translation>
    </message>
    <message>
        <source>the sound server makes no progress</source>
        <translation>le serveur de son n’avance plus</translation>
    </message>
    <message>
        <source>the stream cannot be made: %1</source>
        <translation>pas de flux&#xa0;: %1</translation>
    </message>
    <message>
        <source>the stream cannot be connected: %1</source>
        <translation>flux sans connexion&#xa0;: %1</translation>
    </message>
    <message>
        <source>the sound server says: %1</source>
        <translation>le serveur de son signale&#xa0;: %1</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>le disque est plein</translation>
    </message>
    <message>
        <source>the quota is used up</source>
        <translation>le quota est épuisé</translation>
    </message>
    <message>
        <source>the file is too large for this disk</source>
        <translation>le fichier est trop gros pour ce disque</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>le disque est en lecture seule</translation>
    </message>
    <message>
        <source>the folder is not writable</source>
        <translation>le dossier est protégé en écriture</translation>
    </message>
    <message>
        <source>the folder is gone</source>
        <translation>le dossier a disparu</translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation>le disque signale une erreur</translation>
    </message>
    <message>
        <source>another program writes this file</source>
        <translation>un autre programme écrit ce fichier</translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation>trop de fichiers sont ouverts</translation>
    </message>
    <message>
        <source>the computer is out of memory</source>
        <translation>l’ordinateur n’a plus de mémoire</translation>
    </message>
</context>
<context>
    <name>RecordingEstimate</name>
    <message>
        <source>About %1 MB an hour.</source>
        <translation>Environ %1&#xa0;Mo par heure.</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: %2 MB an hour.</source>
        <translation>Au départ, un enregistrement met le débit à %1&#xa0;kbit/s&#xa0;: %2&#xa0;Mo par heure.</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: about %2 MB an hour.</source>
        <translation>Au départ, un enregistrement met le débit à %1&#xa0;kbit/s&#xa0;: environ %2&#xa0;Mo par heure.</translation>
    </message>
    <message>
        <source>This disk is full.</source>
        <translation>Ce disque est plein.</translation>
    </message>
    <message>
        <source>1 minute fits on this disk.</source>
        <translation>Place pour 1&#xa0;minute.</translation>
    </message>
    <message numerus="yes">
        <source>%1 minutes fit on this disk.</source>
        <translation>
            <numerusform>Place pour %1&#xa0;minute.</numerusform>
            <numerusform>Place pour %1&#xa0;minutes.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour fits on this disk.</source>
        <translation>Place pour 1&#xa0;heure.</translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <comment>less than ten, with a decimal</comment>
        <translation>
            <numerusform>Place pour %1&#xa0;heure.</numerusform>
            <numerusform>Place pour %1&#xa0;heures.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <translation>
            <numerusform>Place pour %1&#xa0;heure.</numerusform>
            <numerusform>Place pour %1&#xa0;heures.</numerusform>
        </translation>
    </message>
    <message>
        <source>Whatever bitrate is chosen here, a recording takes the highest.
A quality target makes smaller files.</source>
        <translation>Quel que soit le débit choisi ici, un enregistrement prend le plus élevé.
Viser une qualité donne des fichiers plus petits.</translation>
    </message>
    <message>
        <source>With a quality target the size depends on the sound:
music needs most, speech and silence less.</source>
        <translation>Quand une qualité est visée, la taille dépend du son&#xa0;:
la musique prend le plus de place, la parole et le silence moins.</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>the computer was asleep</source>
        <translation>l’ordinateur était en veille</translation>
    </message>
    <message>
        <source>the sound server stood still</source>
        <translation>le serveur de son était à l’arrêt</translation>
    </message>
    <message>
        <source>the computer was busy</source>
        <translation>l’ordinateur était occupé</translation>
    </message>
    <message>
        <source>%1 was away</source>
        <translation>%1 était absent</translation>
    </message>
    <message>
        <source>Recording from %1</source>
        <translation>Enregistrement depuis %1</translation>
    </message>
    <message>
        <source>Paused, recording from %1</source>
        <translation>En pause, enregistrement depuis %1</translation>
    </message>
    <message>
        <source>Playing %1</source>
        <translation>Lecture de %1</translation>
    </message>
    <message>
        <source>Paused, playing %1</source>
        <translation>En pause, lecture de %1</translation>
    </message>
    <message>
        <source>No input device</source>
        <translation>Aucun périphérique d’entrée</translation>
    </message>
    <message>
        <source>Input device is now %1</source>
        <translation>L’entrée est maintenant %1</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Prêt</translation>
    </message>
    <message>
        <source>Waiting for a folder to be chosen</source>
        <translation>En attente du choix d’un dossier</translation>
    </message>
    <message>
        <source>Nothing opens %1</source>
        <translation>Aucun programme n’ouvre %1</translation>
    </message>
</context>
<context>
    <name>TakeHandle</name>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Afficher dans le dossier</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Copier le chemin</translation>
    </message>
</context>
<context>
    <name>TitleStrip</name>
    <message>
        <source>Minimise</source>
        <translation>Réduire</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
</context>
<context>
    <name>Troubles</name>
    <message>
        <source>less than a minute</source>
        <translation>moins d’une minute</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1&#xa0;minute</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n&#xa0;minute</numerusform>
            <numerusform>%n&#xa0;minutes</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1&#xa0;s</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1&#xa0;min %2&#xa0;s</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 non écrites&#xa0;: %2</translation>
    </message>
    <message>
        <source>the disk was too slow</source>
        <translation>le disque était trop lent</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>Le disque ne répond pas</translation>
    </message>
    <message>
        <source>The folder is gone</source>
        <translation>Le dossier a disparu</translation>
    </message>
    <message>
        <source>The file is gone</source>
        <translation>Le fichier a disparu</translation>
    </message>
    <message>
        <source>The disk is full</source>
        <translation>Le disque est plein</translation>
    </message>
    <message>
        <source>No sound is arriving from %1</source>
        <translation>Aucun son n’arrive de %1</translation>
    </message>
    <message>
        <source>The file cannot be written</source>
        <translation>Le fichier ne peut pas être écrit</translation>
    </message>
    <message>
        <source>%1 is muted</source>
        <translation>%1 est en sourdine</translation>
    </message>
    <message>
        <source>The disk is nearly full: %1 left</source>
        <translation>Le disque est presque plein&#xa0;: reste %1</translation>
    </message>
    <message>
        <source>Only silence from %1</source>
        <translation>Seulement du silence de %1</translation>
    </message>
    <message>
        <source>%1 are missing: %2</source>
        <translation>Il manque %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1: %2 are safe in memory</source>
        <translation>%1&#xa0;: %2 à l’abri en mémoire</translation>
    </message>
</context>
<context>
    <name>WindowTitle</name>
    <message>
        <source>Recording %1 - %2</source>
        <translation>Enregistrement %1 - %2</translation>
    </message>
    <message>
        <source>Paused %1 - %2</source>
        <translation>En pause %1 - %2</translation>
    </message>
    <message>
        <source>Playing - %1</source>
        <translation>Lecture - %1</translation>
    </message>
    <message>
        <source>Playback paused - %1</source>
        <translation>Lecture en pause - %1</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Recording sound</source>
        <translation>Enregistrement du son en cours</translation>
    </message>
</context>
</TS>
