<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>Alerts</name>
    <message>
        <source>Unsupport format: %1 bits per channel, %2 sample rate, %3 channels per frame, flags: %4</source>
        <translation>Formato no admitido: %1 bits por canal, frecuencia de muestreo %2, %3 canales por trama, indicadores: %4</translation>
    </message>
    <message>
        <source>Failed to start record.</source>
        <translation>No se ha podido iniciar la grabación.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Need to access the %1</source>
        <translation>Se necesita acceso: %1</translation>
    </message>
    <message>
        <source>microphone</source>
        <translation>micrófono</translation>
    </message>
    <message>
        <source>Before continue, you must granted to access %1. Go to &quot;Apple-&gt;System Preferences...-&gt;Security &amp; Privacy-&gt;Privacy-&gt;%2&quot; to set, and then relaunch.</source>
        <translation>Antes de continuar, permita este acceso: %1. Abra «Apple-&gt;Preferencias del Sistema...-&gt;Seguridad y privacidad-&gt;Privacidad-&gt;%2» y vuelva a iniciar el programa.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Micrófono</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>Elija una carpeta para sus grabaciones</translation>
    </message>
</context>
<context>
    <name>ConfigureSheet</name>
    <message>
        <source>Encoder</source>
        <translation>Codificador</translation>
    </message>
</context>
<context>
    <name>EncoderForm</name>
    <message>
        <source>Bitrate</source>
        <translation>Tasa de bits</translation>
    </message>
    <message>
        <source>Bitrate target</source>
        <translation>Objetivo: tasa de bits</translation>
    </message>
    <message>
        <source>Aim at a bitrate (Alt+B)</source>
        <translation>Buscar una tasa de bits (Alt+B)</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Calidad</translation>
    </message>
    <message>
        <source>Quality target</source>
        <translation>Objetivo: calidad</translation>
    </message>
    <message>
        <source>Aim at a quality (Alt+Q)</source>
        <translation>Buscar una calidad (Alt+Q)</translation>
    </message>
    <message>
        <source>0 sounds best, 9.999 makes the smallest file</source>
        <translation>0 suena mejor, 9,999 crea el archivo más pequeño</translation>
    </message>
    <message>
        <source>Quality value</source>
        <translation>Valor de la calidad</translation>
    </message>
    <message>
        <source>Kilobits for each second of sound</source>
        <translation>Kilobits por cada segundo de sonido</translation>
    </message>
    <message>
        <source>Bitrate value</source>
        <translation>Valor de la tasa de bits</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>Limitar el codificador a tasa constante</translation>
    </message>
    <message>
        <source>The same bitrate for all of the recording, instead of an average (Alt+R)</source>
        <translation>La misma tasa de bits en toda la grabación, en vez de una media (Alt+R)</translation>
    </message>
    <message>
        <source>Engine</source>
        <translation>Motor</translation>
    </message>
    <message>
        <source>Engine quality</source>
        <translation>Calidad del motor</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>VBR mode</source>
        <translation>Modo VBR</translation>
    </message>
    <message>
        <source>high</source>
        <translation>alta</translation>
    </message>
    <message>
        <source>standard</source>
        <translation>estándar</translation>
    </message>
    <message>
        <source>fast</source>
        <translation>rápido</translation>
    </message>
    <message>
        <source>%1kbps</source>
        <translation>%1&#xa0;kbit/s</translation>
    </message>
    <message>
        <source>How much time the encoder takes (Alt+E)</source>
        <translation>Cuánto tiempo se toma el codificador (Alt+E)</translation>
    </message>
    <message>
        <source>How the encoder varies the bitrate (Alt+V)</source>
        <translation>Cómo varía el codificador la tasa de bits (Alt+V)</translation>
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
        <translation>Carpeta de grabaciones</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Elegir…</translation>
    </message>
    <message>
        <source>Choose folder</source>
        <translation>Elegir carpeta</translation>
    </message>
    <message>
        <source>Choose the folder for recordings (Alt+C)</source>
        <translation>Elegir la carpeta para las grabaciones (Alt+C)</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Mostrar</translation>
    </message>
    <message>
        <source>Show folder</source>
        <translation>Mostrar carpeta</translation>
    </message>
    <message>
        <source>Show the folder in the file manager (Alt+S)</source>
        <translation>Mostrar la carpeta en el gestor de archivos (Alt+S)</translation>
    </message>
    <message>
        <source>Working folder</source>
        <translation>Carpeta de trabajo</translation>
    </message>
    <message>
        <source>Show each recording in the file manager</source>
        <translation>Mostrar cada grabación en el gestor de archivos</translation>
    </message>
    <message>
        <source>When a recording has been stopped (Alt+F)</source>
        <translation>Cuando se ha detenido una grabación (Alt+F)</translation>
    </message>
    <message>
        <source>Recording estimate</source>
        <translation>Estimación de la grabación</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Hecho</translation>
    </message>
    <message>
        <source>Back to the recorder (Esc)</source>
        <translation>Volver a la grabadora (Esc)</translation>
    </message>
    <message>
        <source>Please select a location to save the recording</source>
        <translation>Seleccione dónde guardar la grabación</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>Limitar el codificador a tasa constante</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Calidad</translation>
    </message>
    <message>
        <source>Bitrate</source>
        <translation>Tasa de bits</translation>
    </message>
    <message>
        <source>Waiting for the disk of %1</source>
        <translation>Esperando al disco de %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>two sentences</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>Waiting for the disk.</source>
        <translation>Esperando al disco.</translation>
    </message>
    <message>
        <source>The folder is gone.</source>
        <translation>La carpeta ya no existe.</translation>
    </message>
    <message>
        <source>This is not a folder.</source>
        <translation>Esto no es una carpeta.</translation>
    </message>
    <message>
        <source>The folder is not writable.</source>
        <translation>No se puede escribir en la carpeta.</translation>
    </message>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>Elija una carpeta para sus grabaciones</translation>
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
        <translation>Detenido. %1</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Detenido</translation>
    </message>
</context>
<context>
    <name>KTMP3ConfigureWndCtrl</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>Cerrar (Esc)</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Input level</source>
        <translation>Nivel de entrada</translation>
    </message>
</context>
<context>
    <name>MainCard</name>
    <message>
        <source>No input device</source>
        <translation>Ningún dispositivo de entrada</translation>
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
        <translation>Tiempo transcurrido</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>Input device</source>
        <translation>Dispositivo de entrada</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Grabar</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Output file</source>
        <translation>Archivo de salida</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Mostrar en la carpeta</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Preferencias</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
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
        <translation>Preferencias</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>Cannot record: %1</source>
        <translation>No se puede grabar: %1</translation>
    </message>
    <message>
        <source>Cannot play %1: %2</source>
        <translation>%1 no reproducible: %2</translation>
    </message>
</context>
<context>
    <name>PulseStream</name>
    <message>
        <source>Recording</source>
        <translation>Grabación</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Reproducción</translation>
    </message>
</context>
<context>
    <name>Reason</name>
    <message>
        <source>this many bits a sample are not supported: %1</source>
        <translation>no se admite este número de bits por muestra: %1</translation>
    </message>
    <message>
        <source>the file cannot be opened</source>
        <translation>no se puede abrir el archivo</translation>
    </message>
    <message>
        <source>it is being recorded from already</source>
        <translation>ya se está grabando de este dispositivo</translation>
    </message>
    <message>
        <source>a folder is being chosen already</source>
        <translation>ya se está eligiendo una carpeta</translation>
    </message>
    <message>
        <source>there is no such device</source>
        <translation>no existe ese dispositivo</translation>
    </message>
    <message>
        <source>something else than linear PCM is asked for</source>
        <translation>se pide algo distinto de PCM lineal</translation>
    </message>
    <message>
        <source>there is no room for a thread</source>
        <translation>no hay sitio para otro hilo</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>no existe</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>no es un archivo normal</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>el archivo está vacío</translation>
    </message>
    <message>
        <source>no MPEG audio in it</source>
        <translation>sin audio MPEG</translation>
    </message>
    <message>
        <source>the disk does not answer</source>
        <translation>el disco no responde</translation>
    </message>
    <message>
        <source>the sound server does not answer</source>
        <translation>el servidor de sonido no responde</translation>
    </message>
    <message>
        <source>there is no room for a connection to the sound server</source>
        <translation>sin sitio para conectar con el servidor de sonido</translation>
    </message>
    <message>
        <source>Access denied</source>
        <translation>acceso denegado</translation>
    </message>
    <message>
        <source>Connection refused</source>
        <translation>conexión rechazada</translation>
    </message>
    <message>
        <source>Connection terminated</source>
        <translation>conexión terminada</translation>
    </message>
    <message>
        <source>No such entity</source>
        <translation>no existe</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>tiempo agotado</translation>
    </message>
    <message>
        <source>there is no sound server: %1</source>
        <translation>no hay servidor de sonido: %1</translation>
    </message>
    <message>
        <source>the sound server makes no progress</source>
        <translation>el servidor de sonido no avanza</translation>
    </message>
    <message>
        <source>the stream cannot be made: %1</source>
        <translation>no se puede crear el flujo: %1</translation>
    </message>
    <message>
        <source>the stream cannot be connected: %1</source>
        <translation>no se puede conectar el flujo: %1</translation>
    </message>
    <message>
        <source>the sound server says: %1</source>
        <translation>el servidor de sonido dice: %1</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>el disco está lleno</translation>
    </message>
    <message>
        <source>the quota is used up</source>
        <translation>se ha agotado la cuota</translation>
    </message>
    <message>
        <source>the file is too large for this disk</source>
        <translation>el archivo es demasiado grande para este disco</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>el disco es de solo lectura</translation>
    </message>
    <message>
        <source>the folder is not writable</source>
        <translation>no se puede escribir en la carpeta</translation>
    </message>
    <message>
        <source>the folder is gone</source>
        <translation>la carpeta ya no existe</translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation>el disco comunica un error</translation>
    </message>
    <message>
        <source>another program writes this file</source>
        <translation>otro programa escribe este archivo</translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation>hay demasiados archivos abiertos</translation>
    </message>
    <message>
        <source>the computer is out of memory</source>
        <translation>el equipo se ha quedado sin memoria</translation>
    </message>
</context>
<context>
    <name>RecordingEstimate</name>
    <message>
        <source>About %1 MB an hour.</source>
        <translation>Unos %1&#xa0;MB por hora.</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: %2 MB an hour.</source>
        <translation>Al empezar, una grabación fija la tasa en %1&#xa0;kbit/s: %2&#xa0;MB por hora.</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: about %2 MB an hour.</source>
        <translation>Al empezar, una grabación fija la tasa en %1&#xa0;kbit/s: unos %2&#xa0;MB por hora.</translation>
    </message>
    <message>
        <source>This disk is full.</source>
        <translation>Este disco está lleno.</translation>
    </message>
    <message>
        <source>1 minute fits on this disk.</source>
        <translation>Queda sitio para 1 minuto.</translation>
    </message>
    <message numerus="yes">
        <source>%1 minutes fit on this disk.</source>
        <translation>
            <numerusform>Queda sitio para %1 minuto.</numerusform>
            <numerusform>Queda sitio para %1 minutos.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour fits on this disk.</source>
        <translation>Queda sitio para 1 hora.</translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <comment>less than ten, with a decimal</comment>
        <translation>
            <numerusform>Queda sitio para %1 horas.</numerusform>
            <numerusform>Queda sitio para %1 horas.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <translation>
            <numerusform>Queda sitio para %1 hora.</numerusform>
            <numerusform>Queda sitio para %1 horas.</numerusform>
        </translation>
    </message>
    <message>
        <source>Whatever bitrate is chosen here, a recording takes the highest.
A quality target makes smaller files.</source>
        <translation>Sea cual sea la tasa elegida aquí, una grabación usa la más alta.
Con una calidad como objetivo los archivos son más pequeños.</translation>
    </message>
    <message>
        <source>With a quality target the size depends on the sound:
music needs most, speech and silence less.</source>
        <translation>Con una calidad como objetivo, el tamaño depende del sonido:
la música ocupa más; la voz y el silencio, menos.</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>the computer was asleep</source>
        <translation>el equipo estaba suspendido</translation>
    </message>
    <message>
        <source>the sound server stood still</source>
        <translation>el servidor de sonido estaba parado</translation>
    </message>
    <message>
        <source>the computer was busy</source>
        <translation>el equipo estaba ocupado</translation>
    </message>
    <message>
        <source>%1 was away</source>
        <translation>%1 no estaba</translation>
    </message>
    <message>
        <source>Recording from %1</source>
        <translation>Grabando de %1</translation>
    </message>
    <message>
        <source>Paused, recording from %1</source>
        <translation>En pausa, grabando de %1</translation>
    </message>
    <message>
        <source>Playing %1</source>
        <translation>Reproduciendo %1</translation>
    </message>
    <message>
        <source>Paused, playing %1</source>
        <translation>En pausa, reproduciendo %1</translation>
    </message>
    <message>
        <source>No input device</source>
        <translation>Ningún dispositivo de entrada</translation>
    </message>
    <message>
        <source>Input device is now %1</source>
        <translation>La entrada es ahora %1</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Listo</translation>
    </message>
    <message>
        <source>Waiting for a folder to be chosen</source>
        <translation>A la espera de que se elija una carpeta</translation>
    </message>
    <message>
        <source>Nothing opens %1</source>
        <translation>Ningún programa abre %1</translation>
    </message>
</context>
<context>
    <name>TakeHandle</name>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Mostrar en la carpeta</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Copiar la ruta</translation>
    </message>
</context>
<context>
    <name>TitleStrip</name>
    <message>
        <source>Minimise</source>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
</context>
<context>
    <name>Troubles</name>
    <message>
        <source>less than a minute</source>
        <translation>menos de un minuto</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1 minuto</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n minuto</numerusform>
            <numerusform>%n minutos</numerusform>
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
        <translation>Sin escribir %1: %2</translation>
    </message>
    <message>
        <source>the disk was too slow</source>
        <translation>el disco era demasiado lento</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>El disco no responde</translation>
    </message>
    <message>
        <source>The folder is gone</source>
        <translation>La carpeta ya no existe</translation>
    </message>
    <message>
        <source>The file is gone</source>
        <translation>El archivo ya no existe</translation>
    </message>
    <message>
        <source>The disk is full</source>
        <translation>El disco está lleno</translation>
    </message>
    <message>
        <source>No sound is arriving from %1</source>
        <translation>No llega sonido de %1</translation>
    </message>
    <message>
        <source>The file cannot be written</source>
        <translation>No se puede escribir el archivo</translation>
    </message>
    <message>
        <source>%1 is muted</source>
        <translation>%1 está silenciado</translation>
    </message>
    <message>
        <source>The disk is nearly full: %1 left</source>
        <translation>El disco está casi lleno: queda %1</translation>
    </message>
    <message>
        <source>Only silence from %1</source>
        <translation>Solo silencio de %1</translation>
    </message>
    <message>
        <source>%1 are missing: %2</source>
        <translation>Faltan %1: %2</translation>
    </message>
    <message>
        <source>%1: %2 are safe in memory</source>
        <translation>%1: %2 a salvo en memoria</translation>
    </message>
</context>
<context>
    <name>WindowTitle</name>
    <message>
        <source>Recording %1 - %2</source>
        <translation>Grabando %1 - %2</translation>
    </message>
    <message>
        <source>Paused %1 - %2</source>
        <translation>En pausa %1 - %2</translation>
    </message>
    <message>
        <source>Playing - %1</source>
        <translation>Reproduciendo - %1</translation>
    </message>
    <message>
        <source>Playback paused - %1</source>
        <translation>Reproducción en pausa - %1</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Recording sound</source>
        <translation>Grabando sonido</translation>
    </message>
</context>
</TS>
