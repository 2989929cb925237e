<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>Alerts</name>
    <message>
        <source>Unsupport format: %1 bits per channel, %2 sample rate, %3 channels per frame, flags: %4</source>
        <translation>تنسيق غير مدعوم: %1 بت لكل قناة، معدل العينات %2، %3 قناة لكل إطار، الأعلام: %4</translation>
    </message>
    <message>
        <source>Failed to start record.</source>
        <translation>تعذر بدء التسجيل.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>Need to access the %1</source>
        <translation>يلزم الوصول إلى %1</translation>
    </message>
    <message>
        <source>microphone</source>
        <translation>الميكروفون</translation>
    </message>
    <message>
        <source>Before continue, you must granted to access %1. Go to &quot;Apple-&gt;System Preferences...-&gt;Security &amp; Privacy-&gt;Privacy-&gt;%2&quot; to set, and then relaunch.</source>
        <translation>قبل المتابعة، يرجى السماح بالوصول إلى %1. انتقل إلى «Apple-&gt;تفضيلات النظام...-&gt;الأمن والخصوصية-&gt;الخصوصية-&gt;%2» ثم أعد تشغيل البرنامج.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>الميكروفون</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>اختر مجلدًا لتسجيلاتك</translation>
    </message>
</context>
<context>
    <name>ConfigureSheet</name>
    <message>
        <source>Encoder</source>
        <translation>المرمّز</translation>
    </message>
</context>
<context>
    <name>EncoderForm</name>
    <message>
        <source>Bitrate</source>
        <translation>معدل البت</translation>
    </message>
    <message>
        <source>Bitrate target</source>
        <translation>استهداف معدل البت</translation>
    </message>
    <message>
        <source>Aim at a bitrate (Alt+B)</source>
        <translation>استهداف معدل بت (Alt+B)</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>الجودة</translation>
    </message>
    <message>
        <source>Quality target</source>
        <translation>استهداف الجودة</translation>
    </message>
    <message>
        <source>Aim at a quality (Alt+Q)</source>
        <translation>استهداف جودة (Alt+Q)</translation>
    </message>
    <message>
        <source>0 sounds best, 9.999 makes the smallest file</source>
        <translation>0 لأفضل صوت، و9.999 لأصغر ملف</translation>
    </message>
    <message>
        <source>Quality value</source>
        <translation>قيمة الجودة</translation>
    </message>
    <message>
        <source>Kilobits for each second of sound</source>
        <translation>كيلوبت لكل ثانية من الصوت</translation>
    </message>
    <message>
        <source>Bitrate value</source>
        <translation>قيمة معدل البت</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>تقييد المرمّز بمعدل بت ثابت</translation>
    </message>
    <message>
        <source>The same bitrate for all of the recording, instead of an average (Alt+R)</source>
        <translation>معدل البت نفسه للتسجيل كله بدلًا من متوسط (Alt+R)</translation>
    </message>
    <message>
        <source>Engine</source>
        <translation>المحرك</translation>
    </message>
    <message>
        <source>Engine quality</source>
        <translation>جودة المحرك</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>VBR mode</source>
        <translation>وضع VBR</translation>
    </message>
    <message>
        <source>high</source>
        <translation>عالية</translation>
    </message>
    <message>
        <source>standard</source>
        <translation>قياسي</translation>
    </message>
    <message>
        <source>fast</source>
        <translation>سريع</translation>
    </message>
    <message>
        <source>%1kbps</source>
        <translation>%1 kbps</translation>
    </message>
    <message>
        <source>How much time the encoder takes (Alt+E)</source>
        <translation>مقدار الوقت الذي يستغرقه المرمّز (Alt+E)</translation>
    </message>
    <message>
        <source>How the encoder varies the bitrate (Alt+V)</source>
        <translation>كيف يغيّر المرمّز معدل البت (Alt+V)</translation>
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
        <translation>تُحفظ التسجيلات في</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>اختيار…</translation>
    </message>
    <message>
        <source>Choose folder</source>
        <translation>اختيار المجلد</translation>
    </message>
    <message>
        <source>Choose the folder for recordings (Alt+C)</source>
        <translation>اختيار مجلد التسجيلات (Alt+C)</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>إظهار</translation>
    </message>
    <message>
        <source>Show folder</source>
        <translation>إظهار المجلد</translation>
    </message>
    <message>
        <source>Show the folder in the file manager (Alt+S)</source>
        <translation>إظهار المجلد في مدير الملفات (Alt+S)</translation>
    </message>
    <message>
        <source>Working folder</source>
        <translation>مجلد العمل</translation>
    </message>
    <message>
        <source>Show each recording in the file manager</source>
        <translation>إظهار كل تسجيل في مدير الملفات</translation>
    </message>
    <message>
        <source>When a recording has been stopped (Alt+F)</source>
        <translation>عند إيقاف التسجيل (Alt+F)</translation>
    </message>
    <message>
        <source>Recording estimate</source>
        <translation>تقدير التسجيل</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>تم</translation>
    </message>
    <message>
        <source>Back to the recorder (Esc)</source>
        <translation>العودة إلى المسجل (Esc)</translation>
    </message>
    <message>
        <source>Please select a location to save the recording</source>
        <translation>يرجى اختيار مكان لحفظ التسجيل</translation>
    </message>
    <message>
        <source>Restrict encoder to constant bitrate</source>
        <translation>تقييد المرمّز بمعدل بت ثابت</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>الجودة</translation>
    </message>
    <message>
        <source>Bitrate</source>
        <translation>معدل البت</translation>
    </message>
    <message>
        <source>Waiting for the disk of %1</source>
        <translation>في انتظار قرص ⁨%1⁩</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>two sentences</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>Waiting for the disk.</source>
        <translation>في انتظار القرص.</translation>
    </message>
    <message>
        <source>The folder is gone.</source>
        <translation>المجلد لم يعد موجودًا.</translation>
    </message>
    <message>
        <source>This is not a folder.</source>
        <translation>هذا ليس مجلدًا.</translation>
    </message>
    <message>
        <source>The folder is not writable.</source>
        <translation>المجلد غير قابل للكتابة.</translation>
    </message>
    <message>
        <source>Choose a folder for your recordings</source>
        <translation>اختر مجلدًا لتسجيلاتك</translation>
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
        <translation>توقف. %1</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>توقف</translation>
    </message>
</context>
<context>
    <name>KTMP3ConfigureWndCtrl</name>
    <message>
        <source>OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>إغلاق (Esc)</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Input level</source>
        <translation>مستوى الإدخال</translation>
    </message>
</context>
<context>
    <name>MainCard</name>
    <message>
        <source>No input device</source>
        <translation>لا يوجد جهاز إدخال</translation>
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
        <translation>الوقت المنقضي</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>الحالة</translation>
    </message>
    <message>
        <source>Input device</source>
        <translation>جهاز الإدخال</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>تشغيل</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>تسجيل</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>إيقاف مؤقت</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>إيقاف</translation>
    </message>
    <message>
        <source>Output file</source>
        <translation>ملف الإخراج</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>إظهار في المجلد</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>التفضيلات</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>مساعدة</translation>
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
        <translation>التفضيلات</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>Cannot record: %1</source>
        <translation>تعذر التسجيل: ⁨%1⁩</translation>
    </message>
    <message>
        <source>Cannot play %1: %2</source>
        <translation>تعذر تشغيل ⁨%1⁩: ⁨%2⁩</translation>
    </message>
</context>
<context>
    <name>PulseStream</name>
    <message>
        <source>Recording</source>
        <translation>تسجيل</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>تشغيل</translation>
    </message>
</context>
<context>
    <name>Reason</name>
    <message>
        <source>this many bits a sample are not supported: %1</source>
        <translation>عدد البتات هذا لكل عينة غير مدعوم: %1</translation>
    </message>
    <message>
        <source>the file cannot be opened</source>
        <translation>يتعذر فتح الملف</translation>
    </message>
    <message>
        <source>it is being recorded from already</source>
        <translation>يجري التسجيل من هذا الجهاز بالفعل</translation>
    </message>
    <message>
        <source>a folder is being chosen already</source>
        <translation>يجري اختيار مجلد بالفعل</translation>
    </message>
    <message>
        <source>there is no such device</source>
        <translation>لا يوجد جهاز كهذا</translation>
    </message>
    <message>
        <source>something else than linear PCM is asked for</source>
        <translation>المطلوب ليس PCM خطيًا</translation>
    </message>
    <message>
        <source>there is no room for a thread</source>
        <translation>لا متسع لخيط تنفيذ آخر</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>لا يوجد ملف كهذا</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>ليس ملفًا عاديًا</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>الملف فارغ</translation>
    </message>
    <message>
        <source>no MPEG audio in it</source>
        <translation>لا يحتوي على صوت MPEG</translation>
    </message>
    <message>
        <source>the disk does not answer</source>
        <translation>القرص لا يستجيب</translation>
    </message>
    <message>
        <source>the sound server does not answer</source>
        <translation>خادم الصوت لا يستجيب</translation>
    </message>
    <message>
        <source>there is no room for a connection to the sound server</source>
        <translation>لا متسع للاتصال بخادم الصوت</translation>
    </message>
    <message>
        <source>Access denied</source>
        <translation>رُفض الوصول</translation>
    </message>
    <message>
        <source>Connection refused</source>
        <translation>رُفض الاتصال</translation>
    </message>
    <message>
        <source>Connection terminated</source>
        <translation>انتهى الاتصال</translation>
    </message>
    <message>
        <source>No such entity</source>
        <translation>غير موجود</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>انتهت المهلة</translation>
    </message>
    <message>
        <source>there is no sound server: %1</source>
        <translation>لا يوجد خادم صوت: ⁨%1⁩</translation>
    </message>
    <message>
        <source>the sound server makes no progress</source>
        <translation>خادم الصوت لا يتقدم</translation>
    </message>
    <message>
        <source>the stream cannot be made: %1</source>
        <translation>يتعذر إنشاء تدفق الصوت: ⁨%1⁩</translation>
    </message>
    <message>
        <source>the stream cannot be connected: %1</source>
        <translation>يتعذر وصل تدفق الصوت: ⁨%1⁩</translation>
    </message>
    <message>
        <source>the sound server says: %1</source>
        <translation>خادم الصوت يقول: ⁨%1⁩</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>القرص ممتلئ</translation>
    </message>
    <message>
        <source>the quota is used up</source>
        <translation>استُنفدت الحصة</translation>
    </message>
    <message>
        <source>the file is too large for this disk</source>
        <translation>الملف أكبر مما يسعه هذا القرص</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>القرص للقراءة فقط</translation>
    </message>
    <message>
        <source>the folder is not writable</source>
        <translation>المجلد غير قابل للكتابة</translation>
    </message>
    <message>
        <source>the folder is gone</source>
        <translation>المجلد لم يعد موجودًا</translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation>القرص يبلغ عن خطأ</translation>
    </message>
    <message>
        <source>another program writes this file</source>
        <translation>برنامج آخر يكتب هذا الملف</translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation>عدد الملفات المفتوحة كبير جدًا</translation>
    </message>
    <message>
        <source>the computer is out of memory</source>
        <translation>نفدت ذاكرة الحاسوب</translation>
    </message>
</context>
<context>
    <name>RecordingEstimate</name>
    <message>
        <source>About %1 MB an hour.</source>
        <translation>نحو %1 م.ب في الساعة.</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: %2 MB an hour.</source>
        <translation>يضبط التسجيل معدل البت على %1 kbps عند بدئه: %2 م.ب في الساعة.</translation>
    </message>
    <message>
        <source>A recording sets the bitrate to %1kbps when it starts: about %2 MB an hour.</source>
        <translation>يضبط التسجيل معدل البت على %1 kbps عند بدئه: نحو %2 م.ب في الساعة.</translation>
    </message>
    <message>
        <source>This disk is full.</source>
        <translation>هذا القرص ممتلئ.</translation>
    </message>
    <message>
        <source>1 minute fits on this disk.</source>
        <translation>يتسع هذا القرص لدقيقة واحدة.</translation>
    </message>
    <message numerus="yes">
        <source>%1 minutes fit on this disk.</source>
        <translation>
            <numerusform>يتسع هذا القرص لـ %1 دقيقة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 دقيقة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 دقيقة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 دقائق.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 دقيقة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 دقيقة.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour fits on this disk.</source>
        <translation>يتسع هذا القرص لساعة واحدة.</translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <comment>less than ten, with a decimal</comment>
        <translation>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعات.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 hours fit on this disk.</source>
        <translation>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعات.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
            <numerusform>يتسع هذا القرص لـ %1 ساعة.</numerusform>
        </translation>
    </message>
    <message>
        <source>Whatever bitrate is chosen here, a recording takes the highest.
A quality target makes smaller files.</source>
        <translation>مهما كان معدل البت المختار هنا، يستخدم التسجيل الأعلى.
استهداف الجودة ينتج ملفات أصغر.</translation>
    </message>
    <message>
        <source>With a quality target the size depends on the sound:
music needs most, speech and silence less.</source>
        <translation>عند استهداف الجودة يعتمد الحجم على الصوت:
الموسيقى تحتاج إلى الأكثر، والكلام والصمت إلى أقل.</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>the computer was asleep</source>
        <translation>كان الحاسوب في وضع السكون</translation>
    </message>
    <message>
        <source>the sound server stood still</source>
        <translation>توقف خادم الصوت</translation>
    </message>
    <message>
        <source>the computer was busy</source>
        <translation>كان الحاسوب مشغولًا</translation>
    </message>
    <message>
        <source>%1 was away</source>
        <translation>كان ⁨%1⁩ غير متصل</translation>
    </message>
    <message>
        <source>Recording from %1</source>
        <translation>التسجيل من ⁨%1⁩</translation>
    </message>
    <message>
        <source>Paused, recording from %1</source>
        <translation>متوقف مؤقتًا، التسجيل من ⁨%1⁩</translation>
    </message>
    <message>
        <source>Playing %1</source>
        <translation>تشغيل ⁨%1⁩</translation>
    </message>
    <message>
        <source>Paused, playing %1</source>
        <translation>متوقف مؤقتًا، تشغيل ⁨%1⁩</translation>
    </message>
    <message>
        <source>No input device</source>
        <translation>لا يوجد جهاز إدخال</translation>
    </message>
    <message>
        <source>Input device is now %1</source>
        <translation>جهاز الإدخال الآن هو ⁨%1⁩</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>جاهز</translation>
    </message>
    <message>
        <source>Waiting for a folder to be chosen</source>
        <translation>في انتظار اختيار مجلد</translation>
    </message>
    <message>
        <source>Nothing opens %1</source>
        <translation>لا يوجد برنامج يفتح ⁨%1⁩</translation>
    </message>
</context>
<context>
    <name>TakeHandle</name>
    <message>
        <source>Open</source>
        <translation>فتح</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>إظهار في المجلد</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>نسخ المسار</translation>
    </message>
</context>
<context>
    <name>TitleStrip</name>
    <message>
        <source>Minimise</source>
        <translation>تصغير</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
</context>
<context>
    <name>Troubles</name>
    <message>
        <source>less than a minute</source>
        <translation>أقل من دقيقة</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>دقيقة واحدة</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n دقيقة</numerusform>
            <numerusform>دقيقة واحدة</numerusform>
            <numerusform>دقيقتان</numerusform>
            <numerusform>%n دقائق</numerusform>
            <numerusform>%n دقيقة</numerusform>
            <numerusform>%n دقيقة</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 ث</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 د %2 ث</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>تعذرت كتابة %1: %2</translation>
    </message>
    <message>
        <source>the disk was too slow</source>
        <translation>كان القرص بطيئًا جدًا</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>القرص لا يستجيب</translation>
    </message>
    <message>
        <source>The folder is gone</source>
        <translation>المجلد لم يعد موجودًا</translation>
    </message>
    <message>
        <source>The file is gone</source>
        <translation>الملف لم يعد موجودًا</translation>
    </message>
    <message>
        <source>The disk is full</source>
        <translation>القرص ممتلئ</translation>
    </message>
    <message>
        <source>No sound is arriving from %1</source>
        <translation>لا يصل صوت من ⁨%1⁩</translation>
    </message>
    <message>
        <source>The file cannot be written</source>
        <translation>تتعذر كتابة الملف</translation>
    </message>
    <message>
        <source>%1 is muted</source>
        <translation>⁨%1⁩ مكتوم</translation>
    </message>
    <message>
        <source>The disk is nearly full: %1 left</source>
        <translation>القرص شبه ممتلئ: بقي %1</translation>
    </message>
    <message>
        <source>Only silence from %1</source>
        <translation>صمت فقط من ⁨%1⁩</translation>
    </message>
    <message>
        <source>%1 are missing: %2</source>
        <translation>ينقص %1: %2</translation>
    </message>
    <message>
        <source>%1: %2 are safe in memory</source>
        <translation>%1: %2 في أمان بانتظار الكتابة من الذاكرة</translation>
    </message>
</context>
<context>
    <name>WindowTitle</name>
    <message>
        <source>Recording %1 - %2</source>
        <translation>تسجيل ⁨%1⁩ - ⁨%2⁩</translation>
    </message>
    <message>
        <source>Paused %1 - %2</source>
        <translation>متوقف مؤقتًا ⁨%1⁩ - ⁨%2⁩</translation>
    </message>
    <message>
        <source>Playing - %1</source>
        <translation>تشغيل - ⁨%1⁩</translation>
    </message>
    <message>
        <source>Playback paused - %1</source>
        <translation>التشغيل متوقف مؤقتًا - ⁨%1⁩</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Recording sound</source>
        <translation>جارٍ تسجيل الصوت</translation>
    </message>
</context>
</TS>
