<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>FolderMap</name>
    <message>
        <source>Not listed</source>
        <translation>Nicht aufgeführt</translation>
    </message>
    <message>
        <source>1 smaller item</source>
        <translation>1 kleineres Objekt</translation>
    </message>
    <message>
        <source>%1 smaller items</source>
        <translation>%1 kleinere Objekte</translation>
    </message>
</context>
<context>
    <name>core</name>
    <message>
        <source>Not possible at this moment.</source>
        <translation>Im Moment nicht möglich.</translation>
    </message>
    <message>
        <source>Monitored Folders…</source>
        <translation>Überwachte Ordner …</translation>
    </message>
    <message>
        <source>Monitored Folders</source>
        <translation>Überwachte Ordner</translation>
    </message>
    <message>
        <source>Open at Login</source>
        <translation>Bei der Anmeldung öffnen</translation>
    </message>
    <message>
        <source>Automatic captures</source>
        <translation>Automatische Aufnahmen</translation>
    </message>
    <message>
        <source>Use Check Now to capture manually.</source>
        <translation>Mit „Jetzt prüfen“ wird von Hand aufgenommen.</translation>
    </message>
    <message>
        <source>Keep Tidemark running to record changes.</source>
        <translation>Tidemark muss laufen, damit Änderungen festgehalten werden.</translation>
    </message>
    <message>
        <source>Observation</source>
        <translation>Beobachtung</translation>
    </message>
    <message>
        <source>Pause recording</source>
        <translation>Aufzeichnung anhalten</translation>
    </message>
    <message>
        <source>Resume recording</source>
        <translation>Aufzeichnung fortsetzen</translation>
    </message>
    <message>
        <source>Pause stops collection. Resuming starts a fresh observation; saved snapshot comparisons can still reveal net changes made during the interval.</source>
        <translation>Eine Pause hält das Sammeln an. Danach beginnt eine neue Beobachtung; Vergleiche mit gesicherten Schnappschüssen können weiterhin zeigen, was sich in der Zwischenzeit insgesamt geändert hat.</translation>
    </message>
    <message>
        <source>Additional History</source>
        <translation>Weiterer Verlauf</translation>
    </message>
    <message>
        <source>Homebrew formula changes</source>
        <translation>Änderungen an Homebrew-Formeln</translation>
    </message>
    <message>
        <source>New diagnostic report files</source>
        <translation>Neue Diagnoseberichte</translation>
    </message>
    <message>
        <source>Choose Configuration Files</source>
        <translation>Konfigurationsdateien wählen</translation>
    </message>
    <message>
        <source>Track changes in selected files up to 1 MB. File contents are read but never saved.</source>
        <translation>Verfolgt Änderungen an gewählten Dateien bis 1 MB. Inhalte werden gelesen, aber nie gespeichert.</translation>
    </message>
    <message>
        <source>Stop tracking this file; existing history is retained</source>
        <translation>Diese Datei nicht mehr verfolgen; der bisherige Verlauf bleibt</translation>
    </message>
    <message>
        <source>Clipboard History</source>
        <translation>Verlauf der Zwischenablage</translation>
    </message>
    <message>
        <source>Remember what is copied</source>
        <translation>Merken, was kopiert wird</translation>
    </message>
    <message>
        <source>Days to keep clips</source>
        <translation>Kopiertes aufbewahren (Tage)</translation>
    </message>
    <message>
        <source>Include Folder…</source>
        <translation>Ordner einbeziehen …</translation>
    </message>
    <message>
        <source>Include Folder</source>
        <translation>Ordner einbeziehen</translation>
    </message>
    <message>
        <source>Record indexed file metadata from this folder. File contents are not read.</source>
        <translation>Angaben zu den Dateien dieses Ordners aufzeichnen. Der Inhalt der Dateien wird nicht gelesen.</translation>
    </message>
    <message>
        <source>Stop recording files of this folder; existing history is retained</source>
        <translation>Dateien dieses Ordners nicht mehr aufzeichnen; der bisherige Verlauf bleibt erhalten</translation>
    </message>
    <message>
        <source>Not observing</source>
        <translation>Keine Beobachtung</translation>
    </message>
    <message>
        <source>Observation paused</source>
        <translation>Beobachtung angehalten</translation>
    </message>
    <message>
        <source>File history off</source>
        <translation>Verlauf der Dateien ausgeschaltet</translation>
    </message>
    <message>
        <source>Reading indexed metadata…</source>
        <translation>Angaben zu Dateien werden gelesen …</translation>
    </message>
    <message>
        <source>Choose a folder to record file metadata.</source>
        <translation>Wählen Sie einen Ordner, dessen Dateien aufgezeichnet werden.</translation>
    </message>
    <message>
        <source>Folder access could not be saved.</source>
        <translation>Der Zugriff auf den Ordner konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Recent files are not followed any more, because of an error.</source>
        <translation>Zuletzt benutzte Dateien werden wegen eines Fehlers nicht mehr verfolgt.</translation>
    </message>
    <message>
        <source>Recent files can’t be followed. Check folder access.</source>
        <translation>Zuletzt benutzte Dateien können nicht verfolgt werden. Prüfen Sie den Zugriff auf die Ordner.</translation>
    </message>
    <message>
        <source>No recent changes in the document folders</source>
        <translation>Keine neueren Änderungen in den Ordnern für Dokumente</translation>
    </message>
    <message>
        <source>Document folders and recently used files · up to 2,000 matches per update</source>
        <translation>Ordner für Dokumente und zuletzt benutzte Dateien · höchstens 2.000 Treffer auf einmal</translation>
    </message>
    <message>
        <source>Document folders and recently used files · up to 2,000 matches per update · some changes found later</source>
        <translation>Ordner für Dokumente und zuletzt benutzte Dateien · höchstens 2.000 Treffer auf einmal · manche Änderungen werden später gefunden</translation>
    </message>
    <message>
        <source>Indexed files in included folders · up to 2,000 matches per update</source>
        <translation>Dateien in den einbezogenen Ordnern · höchstens 2.000 Treffer auf einmal</translation>
    </message>
    <message>
        <source>Indexed files in included folders · up to 2,000 matches per update · some changes found later</source>
        <translation>Dateien in den einbezogenen Ordnern · höchstens 2.000 Treffer auf einmal · manche Änderungen werden später gefunden</translation>
    </message>
    <message>
        <source>Clipboard history off</source>
        <translation>Verlauf der Zwischenablage ausgeschaltet</translation>
    </message>
    <message>
        <source>Connecting to the clipboard…</source>
        <translation>Verbindung zur Zwischenablage wird hergestellt …</translation>
    </message>
    <message>
        <source>Recording copied items</source>
        <translation>Kopiertes wird aufgezeichnet</translation>
    </message>
    <message>
        <source>Recording copied items. The application in front is taken for the one that copied, since this desktop does not report which one did.</source>
        <translation>Kopiertes wird aufgezeichnet. Als Herkunft gilt das Programm im Vordergrund, denn diese Arbeitsumgebung meldet nicht, welches Programm kopiert hat.</translation>
    </message>
    <message>
        <source>Recording copied items. This desktop does not report which application copied, so the list of excluded applications has no effect.</source>
        <translation>Kopiertes wird aufgezeichnet. Diese Arbeitsumgebung meldet nicht, welches Programm kopiert hat; die Liste der ausgeschlossenen Programme ist deshalb ohne Wirkung.</translation>
    </message>
    <message>
        <source>The clipboard can’t be watched: there is no graphical session.</source>
        <translation>Die Zwischenablage kann nicht beobachtet werden: Es gibt keine grafische Sitzung.</translation>
    </message>
    <message>
        <source>This desktop does not let other programs watch the clipboard.</source>
        <translation>Diese Arbeitsumgebung lässt andere Programme die Zwischenablage nicht beobachten.</translation>
    </message>
    <message>
        <source>This display server does not report what is copied.</source>
        <translation>Dieser Anzeigeserver meldet nicht, was kopiert wird.</translation>
    </message>
    <message>
        <source>Items that their program marks as secret are never read. Browser extensions of password managers usually mark nothing.</source>
        <translation>Was ein Programm als vertraulich markiert, wird nie gelesen. Erweiterungen von Passwortverwaltungen im Browser markieren meist nichts.</translation>
    </message>
    <message>
        <source>Excluded Applications</source>
        <translation>Ausgeschlossene Programme</translation>
    </message>
    <message>
        <source>Identifiers, with commas between them</source>
        <translation>Kennungen, durch Kommas getrennt</translation>
    </message>
    <message>
        <source>Launches of these applications and what is copied from them are not recorded.</source>
        <translation>Starts dieser Programme und aus ihnen Kopiertes werden nicht aufgezeichnet.</translation>
    </message>
    <message>
        <source>Copy Again</source>
        <translation>Noch einmal kopieren</translation>
    </message>
    <message>
        <source>File metadata of the desktop, not a complete filesystem audit. Known files only; times may precede Tidemark&apos;s observation.</source>
        <translation>Angaben zu Dateien, keine vollständige Überwachung des Dateisystems. Nur bekannte Dateien; die Zeiten können vor der Beobachtung durch Tidemark liegen.</translation>
    </message>
    <message>
        <source>Last-used metadata of the desktop. It may be delayed or unavailable and does not identify which application opened the file.</source>
        <translation>Angaben der Arbeitsumgebung zur letzten Benutzung. Sie können verspätet sein oder fehlen und sagen nicht, welches Programm die Datei geöffnet hat.</translation>
    </message>
    <message>
        <source>Captured after clipboard history was enabled. Source is the application that copied where the desktop reports it, else the one in front. Sensitive marked items and excluded apps are skipped.</source>
        <translation>Aufgezeichnet, seit der Verlauf der Zwischenablage eingeschaltet wurde. Als Herkunft gilt das Programm, das kopiert hat, wo die Arbeitsumgebung es meldet, sonst das im Vordergrund. Als vertraulich markierte Inhalte und ausgeschlossene Programme werden übergangen.</translation>
    </message>
    <message>
        <source>Clear Clipboard History…</source>
        <translation>Verlauf der Zwischenablage löschen …</translation>
    </message>
    <message>
        <source>Connection History</source>
        <translation>Verlauf der Verbindungen</translation>
    </message>
    <message>
        <source>Network connection changes</source>
        <translation>Änderungen der Netzwerkverbindung</translation>
    </message>
    <message>
        <source>Wi-Fi network names</source>
        <translation>Namen von WLAN-Netzen</translation>
    </message>
    <message>
        <source>Bluetooth activity</source>
        <translation>Bluetooth-Aktivität</translation>
    </message>
    <message>
        <source>Bluetooth requires permission and supports paired devices.</source>
        <translation>Bluetooth braucht eine Erlaubnis und umfasst gekoppelte Geräte.</translation>
    </message>
    <message>
        <source>Battery History</source>
        <translation>Verlauf des Akkus</translation>
    </message>
    <message>
        <source>Power and battery changes</source>
        <translation>Änderungen an Stromquelle und Akku</translation>
    </message>
    <message>
        <source>Includes Low Power Mode, charging, and low battery.</source>
        <translation>Mit Stromsparmodus, Laden und niedrigem Ladestand.</translation>
    </message>
    <message>
        <source>Environment History</source>
        <translation>Verlauf der Umgebung</translation>
    </message>
    <message>
        <source>Drives, displays, and thermal pressure</source>
        <translation>Laufwerke, Bildschirme und Wärmebelastung</translation>
    </message>
    <message>
        <source>Files and Applications</source>
        <translation>Dateien und Programme</translation>
    </message>
    <message>
        <source>Recent files and downloads</source>
        <translation>Zuletzt benutzte Dateien und Downloads</translation>
    </message>
    <message>
        <source>Files outside of the chosen folders, too</source>
        <translation>Auch Dateien außerhalb der gewählten Ordner</translation>
    </message>
    <message>
        <source>Application launches and quits</source>
        <translation>Start und Ende von Programmen</translation>
    </message>
    <message>
        <source>Recording &amp; Privacy</source>
        <translation>Aufzeichnung und Privatsphäre</translation>
    </message>
    <message>
        <source>Use Ctrl++ or Ctrl+− to resize timeline, file, download, clipboard and search listings. Ctrl+0 restores the default.</source>
        <translation>Strg++ und Strg+− ändern die Schriftgröße der Listen. Strg+0 stellt sie zurück.</translation>
    </message>
    <message>
        <source>Time windows filter retained history. Saved snapshot comparisons use their own observation interval.</source>
        <translation>Zeiträume filtern den aufbewahrten Verlauf. Vergleiche mit Schnappschüssen haben ihren eigenen Zeitraum.</translation>
    </message>
    <message>
        <source>Reading &amp; Time Window</source>
        <translation>Lesen und Zeitraum</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Erscheinungsbild</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>Import available installation records from the last seven days.</source>
        <translation>Übernimmt die vorhandenen Installationen der letzten sieben Tage.</translation>
    </message>
    <message>
        <source>Import Recent History</source>
        <translation>Jüngsten Verlauf übernehmen</translation>
    </message>
    <message>
        <source>Search History</source>
        <translation>Verlauf durchsuchen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+Space</source>
        <translation>Strg+Umschalt+Leertaste</translation>
    </message>
    <message>
        <source>Shortcut unavailable; use the tray menu</source>
        <translation>Tastenkürzel nicht verfügbar; bitte das Menü im Infobereich benutzen</translation>
    </message>
    <message>
        <source>Another program has these keys.</source>
        <translation>Ein anderes Programm benutzt diese Tasten.</translation>
    </message>
    <message>
        <source>This desktop has no keys that work in every program.</source>
        <translation>Diese Arbeitsumgebung bietet keine Tasten an, die in jedem Programm gelten.</translation>
    </message>
    <message>
        <source>The desktop did not assign the keys.</source>
        <translation>Die Arbeitsumgebung hat die Tasten nicht zugewiesen.</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Choose configuration files. Tidemark reads files under 1 MB to store a fingerprint; contents are never saved.</source>
        <translation>Konfigurationsdateien wählen. Tidemark liest Dateien unter 1 MB und speichert einen Fingerabdruck, nie die Inhalte.</translation>
    </message>
    <message>
        <source>Delete all saved clipboard items, including pins?</source>
        <translation>Alles gespeicherte Kopierte löschen, auch Angeheftetes?</translation>
    </message>
    <message>
        <source>Delete Clipboard History</source>
        <translation>Verlauf der Zwischenablage löschen</translation>
    </message>
    <message>
        <source>Manual only</source>
        <translation>Nur von Hand</translation>
    </message>
    <message>
        <source>Every 30 minutes</source>
        <translation>Alle 30 Minuten</translation>
    </message>
    <message>
        <source>Every hour</source>
        <translation>Jede Stunde</translation>
    </message>
    <message>
        <source>Every 3 hours</source>
        <translation>Alle 3 Stunden</translation>
    </message>
    <message>
        <source>Every 6 hours</source>
        <translation>Alle 6 Stunden</translation>
    </message>
    <message>
        <source>Every 12 hours</source>
        <translation>Alle 12 Stunden</translation>
    </message>
    <message>
        <source>Every day (24 hours)</source>
        <translation>Jeden Tag (24 Stunden)</translation>
    </message>
    <message>
        <source>Readable</source>
        <translation>Lesbar</translation>
    </message>
    <message>
        <source>Not readable</source>
        <translation>Nicht lesbar</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Noch nicht geprüft</translation>
    </message>
    <message>
        <source>Allow Folder</source>
        <translation>Ordner erlauben</translation>
    </message>
    <message>
        <source>Welcome to Tidemark</source>
        <translation>Willkommen bei Tidemark</translation>
    </message>
    <message>
        <source>Choose what Tidemark observes. Everything stays on this computer.</source>
        <translation>Wählen Sie, was Tidemark beobachtet. Alles bleibt auf diesem Computer.</translation>
    </message>
    <message>
        <source>Folders to Monitor</source>
        <translation>Zu überwachende Ordner</translation>
    </message>
    <message>
        <source>Add Additional Folders</source>
        <translation>Weitere Ordner hinzufügen</translation>
    </message>
    <message>
        <source>You can finish setup later.</source>
        <translation>Sie können die Einrichtung später abschließen.</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Future captures will no longer check this folder. A capture already in progress may finish using the previous selection. Your existing history stays saved. You can add the folder again later.</source>
        <translation>Künftige Aufnahmen prüfen diesen Ordner nicht mehr. Eine laufende Aufnahme kann noch mit der bisherigen Auswahl enden. Der bisherige Verlauf bleibt gespeichert. Der Ordner kann später wieder hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Developer Folders</source>
        <translation>Entwickler-Ordner</translation>
    </message>
    <message>
        <source>Suggested locations found on this computer. Select the ones you want to monitor.</source>
        <translation>Vorschläge, die auf diesem Computer gefunden wurden. Wählen Sie, welche überwacht werden sollen.</translation>
    </message>
    <message>
        <source>Monitor Selected</source>
        <translation>Ausgewählte überwachen</translation>
    </message>
    <message>
        <source>Already covered by your monitored folders</source>
        <translation>Schon in Ihren überwachten Ordnern enthalten</translation>
    </message>
    <message>
        <source>No common developer folders found. Use Add Additional Folders for a project elsewhere.</source>
        <translation>Keine üblichen Entwickler-Ordner gefunden. „Weitere Ordner hinzufügen“ nimmt Projekte an anderen Orten auf.</translation>
    </message>
    <message>
        <source>Search Tidemark</source>
        <translation>Tidemark durchsuchen</translation>
    </message>
    <message>
        <source>Search Tidemark…</source>
        <translation>Tidemark durchsuchen …</translation>
    </message>
    <message>
        <source>↑↓ select   ↵ open</source>
        <translation>↑↓ wählen   ↵ öffnen</translation>
    </message>
    <message>
        <source>Esc to close</source>
        <translation>Esc schließt</translation>
    </message>
    <message>
        <source>Dismiss search</source>
        <translation>Suche schließen</translation>
    </message>
    <message>
        <source>Recent recorded history</source>
        <translation>Zuletzt Festgehaltenes</translation>
    </message>
    <message>
        <source>Up to 40 matching events</source>
        <translation>Bis zu 40 passende Ereignisse</translation>
    </message>
    <message>
        <source>Your history starts here</source>
        <translation>Hier beginnt Ihr Verlauf</translation>
    </message>
    <message>
        <source>No matching history</source>
        <translation>Nichts Passendes im Verlauf</translation>
    </message>
    <message>
        <source>Search recorded changes, application events, paths, and system activity.</source>
        <translation>Durchsucht Änderungen, Ereignisse von Programmen, Pfade und Aktivität des Systems.</translation>
    </message>
    <message>
        <source>RECENT ACTIVITY</source>
        <translation>LETZTE AKTIVITÄT</translation>
    </message>
    <message>
        <source>Recorded changes will appear here after an observation.</source>
        <translation>Änderungen erscheinen hier nach einer Beobachtung.</translation>
    </message>
    <message>
        <source>View all</source>
        <translation>Alle anzeigen</translation>
    </message>
    <message>
        <source>CLIPBOARD</source>
        <translation>ZWISCHENABLAGE</translation>
    </message>
    <message>
        <source>Search history · Ctrl+Shift+Space</source>
        <translation>Verlauf durchsuchen · Strg+Umschalt+Leertaste</translation>
    </message>
    <message>
        <source>Search History…</source>
        <translation>Verlauf durchsuchen …</translation>
    </message>
    <message>
        <source>Open Timeline</source>
        <translation>Zeitleiste öffnen</translation>
    </message>
    <message>
        <source>Open Tidemark</source>
        <translation>Tidemark öffnen</translation>
    </message>
    <message>
        <source>Quit Tidemark</source>
        <translation>Tidemark beenden</translation>
    </message>
    <message>
        <source>History stays on your computer</source>
        <translation>Der Verlauf bleibt auf Ihrem Computer</translation>
    </message>
    <message>
        <source>Show in Tidemark</source>
        <translation>In Tidemark zeigen</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>Anheften</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>Lösen</translation>
    </message>
    <message>
        <source>SNAPSHOTS</source>
        <translation>SCHNAPPSCHÜSSE</translation>
    </message>
    <message>
        <source>No saved snapshots</source>
        <translation>Keine Schnappschüsse</translation>
    </message>
    <message>
        <source>Save snapshot</source>
        <translation>Schnappschuss sichern</translation>
    </message>
    <message>
        <source>Save a new snapshot</source>
        <translation>Einen neuen Schnappschuss sichern</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Jetzt prüfen</translation>
    </message>
    <message>
        <source>Checking for changes…</source>
        <translation>Änderungen werden gesucht …</translation>
    </message>
    <message>
        <source>Check for changes (Ctrl+R)</source>
        <translation>Nach Änderungen suchen (Strg+R)</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Export the events in this view</source>
        <translation>Die Ereignisse dieser Ansicht exportieren</translation>
    </message>
    <message>
        <source>Dark Mode</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Switch between Light Mode and Dark Mode</source>
        <translation>Zwischen hell und dunkel wechseln</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>24 hours</source>
        <translation>24 Stunden</translation>
    </message>
    <message>
        <source>3 days</source>
        <translation>3 Tage</translation>
    </message>
    <message>
        <source>7 days</source>
        <translation>7 Tage</translation>
    </message>
    <message>
        <source>30 days</source>
        <translation>30 Tage</translation>
    </message>
    <message>
        <source>All history</source>
        <translation>Ganzer Verlauf</translation>
    </message>
    <message>
        <source>History is stored locally. Changes between observations are not exact activity timestamps.</source>
        <translation>Der Verlauf bleibt auf diesem Computer. Die Zeiten von Änderungen sind nicht genau bekannt.</translation>
    </message>
    <message>
        <source>Observation coverage…</source>
        <translation>Abdeckung …</translation>
    </message>
    <message>
        <source>Snapshot view</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Comparing snapshots…</source>
        <translation>Schnappschüsse werden verglichen …</translation>
    </message>
    <message>
        <source>Some earlier events in this snapshot’s timeline are no longer retained. Compare States can still compare the saved metadata, but cannot reconstruct deleted events.</source>
        <translation>Einige frühere Ereignisse in der Zeitleiste dieses Schnappschusses sind nicht mehr vorhanden. „Zustände vergleichen“ kann die gesicherten Angaben noch vergleichen, gelöschte Ereignisse aber nicht wiederherstellen.</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>Net differences between observations</source>
        <translation>Unterschiede zwischen zwei Beobachtungen</translation>
    </message>
    <message>
        <source>No Matching Changes Recorded</source>
        <translation>Keine passenden Änderungen festgehalten</translation>
    </message>
    <message>
        <source>A reference point for your computer</source>
        <translation>Ein Bezugspunkt für Ihren Computer</translation>
    </message>
    <message>
        <source>Save a snapshot, then explore its timeline or compare it with your latest observation.</source>
        <translation>Sichern Sie einen Schnappschuss, sehen Sie dann seine Zeitleiste an oder vergleichen Sie ihn mit der neuesten Beobachtung.</translation>
    </message>
    <message>
        <source>Your Computer’s Story Starts Here</source>
        <translation>Hier beginnt die Geschichte Ihres Computers</translation>
    </message>
    <message>
        <source>The first observation gives Tidemark a starting point. Future changes will appear here.</source>
        <translation>Die erste Beobachtung ist der Ausgangspunkt. Künftige Änderungen erscheinen hier.</translation>
    </message>
    <message>
        <source>Some Locations Couldn’t Be Observed</source>
        <translation>Einige Orte konnten nicht beobachtet werden</translation>
    </message>
    <message>
        <source>No matching changes were recorded. Open Observation Coverage to see which locations were unavailable.</source>
        <translation>Es wurden keine passenden Änderungen festgehalten. Die Abdeckung zeigt, welche Orte nicht erreichbar waren.</translation>
    </message>
    <message>
        <source>Waiting for a New Observation</source>
        <translation>Eine neue Beobachtung steht aus</translation>
    </message>
    <message>
        <source>Tidemark has not captured a recent observation. Use Check Now to capture your computer’s current state.</source>
        <translation>Es gibt keine neuere Beobachtung. „Jetzt prüfen“ nimmt den jetzigen Zustand Ihres Computers auf.</translation>
    </message>
    <message>
        <source>Starting Point Saved</source>
        <translation>Ausgangspunkt gesichert</translation>
    </message>
    <message>
        <source>Future observations can be compared with this starting point. No observed change history is available yet.</source>
        <translation>Künftige Beobachtungen können mit diesem Ausgangspunkt verglichen werden. Noch gibt es keinen Verlauf.</translation>
    </message>
    <message>
        <source>No matching changes were recorded in this range. Changes that happened and were reversed between observations may be missing.</source>
        <translation>In diesem Zeitraum wurden keine passenden Änderungen festgehalten. Was zwischen zwei Beobachtungen geschah und wieder zurückging, kann fehlen.</translation>
    </message>
    <message>
        <source>No recorded events match the selected period and filters. Only readable locations and meaningful changes are compared.</source>
        <translation>Keine Ereignisse passen zu Zeitraum und Filtern. Nur lesbare Orte und nennenswerte Änderungen werden verglichen.</translation>
    </message>
    <message>
        <source>Tidemark needs your attention</source>
        <translation>Tidemark braucht Ihre Aufmerksamkeit</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Timeline</source>
        <translation>Zeitleiste</translation>
    </message>
    <message>
        <source>Recent Files</source>
        <translation>Letzte Dateien</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>Downloads</translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation>Zwischenablage</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Storage</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Folder Sizes</source>
        <translation>Ordnergrößen</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>System Activity</source>
        <translation>Systemaktivität</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Networking</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Snapshots</source>
        <translation>Schnappschüsse</translation>
    </message>
    <message>
        <source>Your Computer</source>
        <translation>Ihr Computer</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Aktivität</translation>
    </message>
    <message>
        <source>Delete Snapshot</source>
        <translation>Schnappschuss löschen</translation>
    </message>
    <message>
        <source>The copy that was saved under this name is removed. Your recorded history stays.</source>
        <translation>Die unter diesem Namen gesicherte Kopie wird entfernt. Der festgehaltene Verlauf bleibt.</translation>
    </message>
    <message>
        <source>Compare States</source>
        <translation>Zustände vergleichen</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>Observing…</source>
        <translation>Beobachtet …</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Zeichnet auf</translation>
    </message>
    <message>
        <source>Starting…</source>
        <translation>Startet …</translation>
    </message>
    <message>
        <source>Caches</source>
        <translation>Zwischenspeicher</translation>
    </message>
    <message>
        <source>Caches across applications; changes reported at folder thresholds</source>
        <translation>Zwischenspeicher aller Programme; gemeldet ab den Schwellen für Ordner</translation>
    </message>
    <message>
        <source>Container Data</source>
        <translation>Container-Daten</translation>
    </message>
    <message>
        <source>Container images and volumes; logical size can exceed allocated storage</source>
        <translation>Abbilder und Datenträger von Containern; die logische Größe kann den belegten Platz übersteigen</translation>
    </message>
    <message>
        <source>Docker Data</source>
        <translation>Docker-Daten</translation>
    </message>
    <message>
        <source>Docker disk images; logical size can exceed allocated storage</source>
        <translation>Abbilder von Docker; die logische Größe kann den belegten Platz übersteigen</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Arbeit</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Projekte</translation>
    </message>
    <message>
        <source>Developer</source>
        <translation>Entwicklung</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Project folders, dependencies, and build outputs</source>
        <translation>Projektordner, Abhängigkeiten und Ergebnisse von Übersetzungen</translation>
    </message>
    <message>
        <source>Export History</source>
        <translation>Verlauf exportieren</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Include paths, device and Wi-Fi names</source>
        <translation>Pfade, Geräte- und WLAN-Namen aufnehmen</translation>
    </message>
    <message>
        <source>App names and other event metadata remain included. Review the file before sharing. History may be incomplete. This is a report, not a backup.</source>
        <translation>Programmnamen und andere Angaben zu Ereignissen bleiben enthalten. Sehen Sie die Datei durch, bevor Sie sie weitergeben. Der Verlauf kann unvollständig sein. Dies ist ein Bericht, keine Sicherung.</translation>
    </message>
    <message>
        <source>A little history to start with</source>
        <translation>Ein wenig Verlauf für den Anfang</translation>
    </message>
    <message>
        <source>Import installation records from the last 7 days. They’ll appear on their recorded dates, labeled “Imported from the system.”</source>
        <translation>Übernimmt Installationen der letzten 7 Tage. Sie erscheinen an ihrem Datum mit dem Vermerk „Vom System übernommen“.</translation>
    </message>
    <message>
        <source>Events from before Tidemark was installed may be incomplete. This import cannot reconstruct past storage changes, removals, or previous app versions.</source>
        <translation>Ereignisse aus der Zeit vor Tidemark können unvollständig sein. Frühere Änderungen am Speicher, Entferntes und frühere Versionen lassen sich nicht wiederherstellen.</translation>
    </message>
    <message>
        <source>Reading the system’s installation history…</source>
        <translation>Die Installationen des Systems werden gelesen …</translation>
    </message>
    <message>
        <source>Include the system’s maintenance records</source>
        <translation>Auch Wartung des Systems</translation>
    </message>
    <message>
        <source>Includes packages that were installed because others needed them.</source>
        <translation>Mit Paketen, die installiert wurden, weil andere sie brauchten.</translation>
    </message>
    <message>
        <source>Local to this computer</source>
        <translation>Bleibt auf diesem Computer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Only the system’s maintenance records were found. Include them above to preview those records.</source>
        <translation>Nur Wartung des Systems wurde gefunden. Oben kann sie einbezogen werden.</translation>
    </message>
    <message>
        <source>No installation records found in the last 7 days.</source>
        <translation>Keine Installationen in den letzten 7 Tagen gefunden.</translation>
    </message>
    <message>
        <source>These records are already in your timeline.</source>
        <translation>Diese Einträge sind schon in Ihrer Zeitleiste.</translation>
    </message>
    <message>
        <source>Already imported</source>
        <translation>Schon übernommen</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>Gestern</translation>
    </message>
    <message>
        <source>Imported from the system</source>
        <translation>Vom System übernommen</translation>
    </message>
    <message>
        <source>Coverage</source>
        <translation>Abdeckung</translation>
    </message>
    <message>
        <source>Observation gaps and access limitations</source>
        <translation>Lücken der Beobachtung und Orte ohne Zugang</translation>
    </message>
    <message>
        <source>Changes happened between observations; this is not an exact installation time.</source>
        <translation>Die Änderung geschah zwischen zwei Beobachtungen; dies ist kein genauer Zeitpunkt.</translation>
    </message>
    <message>
        <source>This is a difference between two saved observations, not an individual event or its installation time.</source>
        <translation>Dies ist ein Unterschied zwischen zwei gesicherten Beobachtungen, kein einzelnes Ereignis und kein Zeitpunkt.</translation>
    </message>
    <message>
        <source>Recording coverage</source>
        <translation>Abdeckung der Aufzeichnung</translation>
    </message>
    <message>
        <source>Last capture before gap</source>
        <translation>Letzte Aufnahme vor der Lücke</translation>
    </message>
    <message>
        <source>Captures resumed</source>
        <translation>Wieder aufgenommen</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Imported from the system’s installation history</source>
        <translation>Aus den Installationen des Systems</translation>
    </message>
    <message>
        <source>Recorded installation date</source>
        <translation>Verzeichnetes Datum</translation>
    </message>
    <message>
        <source>Imported into Tidemark</source>
        <translation>In Tidemark übernommen</translation>
    </message>
    <message>
        <source>Installer source</source>
        <translation>Herkunft</translation>
    </message>
    <message>
        <source>Compared at</source>
        <translation>Verglichen</translation>
    </message>
    <message>
        <source>Recorded at</source>
        <translation>Festgehalten</translation>
    </message>
    <message>
        <source>Compared snapshots</source>
        <translation>Verglichene Schnappschüsse</translation>
    </message>
    <message>
        <source>Observation interval</source>
        <translation>Zeitraum der Beobachtung</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Content</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Downloaded from</source>
        <translation>Geladen von</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Last used</source>
        <translation>Zuletzt benutzt</translation>
    </message>
    <message>
        <source>First observed</source>
        <translation>Zuerst beobachtet</translation>
    </message>
    <message>
        <source>Pinned</source>
        <translation>Angeheftet</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>Copy identifier</source>
        <translation>Kennung kopieren</translation>
    </message>
    <message>
        <source>Inspect Folder Sizes</source>
        <translation>Ordnergrößen ansehen</translation>
    </message>
    <message>
        <source>Identifier</source>
        <translation>Kennung</translation>
    </message>
    <message>
        <source>The version or build changed between observations. The exact installation time and cause are unknown; a restore or downgrade can also change the version.</source>
        <translation>Version oder Build haben sich zwischen zwei Beobachtungen geändert. Zeitpunkt und Ursache sind nicht bekannt; auch eine Wiederherstellung kann die Version ändern.</translation>
    </message>
    <message>
        <source>Trash was observed empty after containing items. Its previous size was not completely measured. Items may have been deleted, restored, or moved elsewhere; this does not confirm disk space was freed.</source>
        <translation>Der Papierkorb war leer, nachdem er etwas enthalten hatte. Seine frühere Größe war nicht vollständig gemessen. Der Inhalt kann gelöscht, wiederhergestellt oder verschoben worden sein; dass Platz frei wurde, ist damit nicht gesagt.</translation>
    </message>
    <message>
        <source>Volume-wide available space can change independently of tracked folders, including system activity and file system snapshots.</source>
        <translation>Der freie Platz des Datenträgers kann sich unabhängig von den überwachten Ordnern ändern, auch durch das System und durch Schnappschüsse des Dateisystems.</translation>
    </message>
    <message>
        <source>Content changed in an explicitly selected file. Tidemark stores a fingerprint, not the file contents or a text diff.</source>
        <translation>Der Inhalt einer gewählten Datei hat sich geändert. Tidemark speichert einen Fingerabdruck, weder den Inhalt noch den Unterschied.</translation>
    </message>
    <message>
        <source>Installed formula versions only. Custom Homebrew locations are not included.</source>
        <translation>Nur installierte Versionen von Formeln. Eigene Orte von Homebrew sind nicht enthalten.</translation>
    </message>
    <message>
        <source>A report file first appeared between captures. Report contents were not read. This does not establish when or why a crash occurred; copied reports can also appear here.</source>
        <translation>Ein Bericht erschien zwischen zwei Aufnahmen. Sein Inhalt wurde nicht gelesen. Wann und warum etwas abstürzte, ist damit nicht gesagt; auch kopierte Berichte können hier erscheinen.</translation>
    </message>
    <message>
        <source>Definition present at last observation</source>
        <translation>Bei der letzten Beobachtung vorhanden</translation>
    </message>
    <message>
        <source>Present at last observation</source>
        <translation>Bei der letzten Beobachtung vorhanden</translation>
    </message>
    <message>
        <source>Definition absent at last observation</source>
        <translation>Bei der letzten Beobachtung nicht vorhanden</translation>
    </message>
    <message>
        <source>Absent at last observation</source>
        <translation>Bei der letzten Beobachtung nicht vorhanden</translation>
    </message>
    <message>
        <source>Unknown · location was not fully observed.</source>
        <translation>Unbekannt · der Ort wurde nicht vollständig beobachtet.</translation>
    </message>
    <message>
        <source>Observed version</source>
        <translation>Beobachtete Version</translation>
    </message>
    <message>
        <source>Observed build</source>
        <translation>Beobachteter Build</translation>
    </message>
    <message>
        <source>Previous version</source>
        <translation>Vorherige Version</translation>
    </message>
    <message>
        <source>Previous build</source>
        <translation>Vorheriger Build</translation>
    </message>
    <message>
        <source>Changed settings</source>
        <translation>Geänderte Einstellungen</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Datenträger</translation>
    </message>
    <message>
        <source>Capacity</source>
        <translation>Kapazität</translation>
    </message>
    <message>
        <source>Previous operating system</source>
        <translation>Vorheriges Betriebssystem</translation>
    </message>
    <message>
        <source>Latest observation</source>
        <translation>Letzte Beobachtung</translation>
    </message>
    <message>
        <source>Folder path</source>
        <translation>Pfad des Ordners</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Application relationship</source>
        <translation>Zugehöriges Programm</translation>
    </message>
    <message>
        <source>Executable</source>
        <translation>Ausführbare Datei</translation>
    </message>
    <message>
        <source>Previously observed items</source>
        <translation>Zuvor beobachtete Einträge</translation>
    </message>
    <message>
        <source>Latest observed items</source>
        <translation>Zuletzt beobachtete Einträge</translation>
    </message>
    <message>
        <source>Homebrew Cellar metadata</source>
        <translation>Angaben aus dem Homebrew-Cellar</translation>
    </message>
    <message>
        <source>Selected file</source>
        <translation>Gewählte Datei</translation>
    </message>
    <message>
        <source>File size</source>
        <translation>Größe der Datei</translation>
    </message>
    <message>
        <source>Report type</source>
        <translation>Art des Berichts</translation>
    </message>
    <message>
        <source>Possible application</source>
        <translation>Mögliches Programm</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Eingeschaltet</translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation>Ausgeschaltet</translation>
    </message>
    <message>
        <source>Low Power Mode</source>
        <translation>Stromsparmodus</translation>
    </message>
    <message>
        <source>Observed sleep interval</source>
        <translation>Beobachteter Ruhezustand</translation>
    </message>
    <message>
        <source>Observed charging interval</source>
        <translation>Beobachtetes Laden</translation>
    </message>
    <message>
        <source>Battery</source>
        <translation>Akku</translation>
    </message>
    <message>
        <source>External power</source>
        <translation>Netzstrom</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Not connected</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <source>Battery across interval</source>
        <translation>Akku im Zeitraum</translation>
    </message>
    <message>
        <source>Based on paired observations in one monitoring session. Notification times are approximate.</source>
        <translation>Aus zwei Beobachtungen desselben Laufs. Die Zeiten der Meldungen sind ungefähr.</translation>
    </message>
    <message>
        <source>Previous connection</source>
        <translation>Vorherige Verbindung</translation>
    </message>
    <message>
        <source>Observed connection</source>
        <translation>Beobachtete Verbindung</translation>
    </message>
    <message>
        <source>Low Data Mode</source>
        <translation>Datensparmodus</translation>
    </message>
    <message>
        <source>Expensive</source>
        <translation>Kostenpflichtig</translation>
    </message>
    <message>
        <source>Not expensive</source>
        <translation>Nicht kostenpflichtig</translation>
    </message>
    <message>
        <source>New Wi-Fi network</source>
        <translation>Neues WLAN</translation>
    </message>
    <message>
        <source>Last connected network</source>
        <translation>Zuletzt verbundenes Netz</translation>
    </message>
    <message>
        <source>Previous Wi-Fi network</source>
        <translation>Vorheriges WLAN</translation>
    </message>
    <message>
        <source>Wi-Fi details are from the last connected observation.</source>
        <translation>Die Angaben zum WLAN stammen aus der letzten verbundenen Beobachtung.</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>Security Mode</source>
        <translation>Sicherheit</translation>
    </message>
    <message>
        <source>Signal at observation</source>
        <translation>Signal bei der Beobachtung</translation>
    </message>
    <message>
        <source>Link rate at observation</source>
        <translation>Rate bei der Beobachtung</translation>
    </message>
    <message>
        <source>Observed item</source>
        <translation>Beobachtet</translation>
    </message>
    <message>
        <source>Device class</source>
        <translation>Art des Geräts</translation>
    </message>
    <message>
        <source>Observed connection interval</source>
        <translation>Beobachtete Verbindung</translation>
    </message>
    <message>
        <source>Observed elevated pressure</source>
        <translation>Beobachtete erhöhte Belastung</translation>
    </message>
    <message>
        <source>Display type</source>
        <translation>Art des Bildschirms</translation>
    </message>
    <message>
        <source>Built-in</source>
        <translation>Eingebaut</translation>
    </message>
    <message>
        <source>External or virtual</source>
        <translation>Extern oder virtuell</translation>
    </message>
    <message>
        <source>Display mode</source>
        <translation>Modus</translation>
    </message>
    <message>
        <source>Previous display mode</source>
        <translation>Vorheriger Modus</translation>
    </message>
    <message>
        <source>Reported refresh rate</source>
        <translation>Gemeldete Bildrate</translation>
    </message>
    <message>
        <source>Display scale</source>
        <translation>Skalierung</translation>
    </message>
    <message>
        <source>Backing scale</source>
        <translation>Skalierung</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Local</source>
        <translation>Lokal</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Access</source>
        <translation>Zugriff</translation>
    </message>
    <message>
        <source>Read only</source>
        <translation>Nur lesen</translation>
    </message>
    <message>
        <source>Read and write</source>
        <translation>Lesen und schreiben</translation>
    </message>
    <message>
        <source>A comparable breakdown wasn’t recorded for both observations. The total size change is still available.</source>
        <translation>Eine vergleichbare Aufteilung gibt es nicht für beide Beobachtungen. Die Änderung im Ganzen ist bekannt.</translation>
    </message>
    <message>
        <source>No individual folder changes in the available breakdown.</source>
        <translation>Keine Änderungen einzelner Ordner in der Aufteilung.</translation>
    </message>
    <message>
        <source>The remaining net change outside the breakdown shown above.</source>
        <translation>Was außerhalb der gezeigten Aufteilung übrig bleibt.</translation>
    </message>
    <message>
        <source>Logical file sizes. Clones, compression, and overlapping locations mean this is not physical disk usage.</source>
        <translation>Logische Größen. Wegen geklonter und komprimierter Dateien und sich überschneidender Orte ist dies nicht der belegte Platz.</translation>
    </message>
    <message>
        <source>File Changes</source>
        <translation>Änderungen an Dateien</translation>
    </message>
    <message>
        <source>Other Changes</source>
        <translation>Weitere Änderungen</translation>
    </message>
    <message>
        <source>Net change</source>
        <translation>Änderung im Ganzen</translation>
    </message>
    <message>
        <source>Where the Size Changed</source>
        <translation>Wo sich die Größe geändert hat</translation>
    </message>
    <message>
        <source>Date not recorded</source>
        <translation>Datum nicht bekannt</translation>
    </message>
    <message>
        <source>Size recorded</source>
        <translation>Größe vom</translation>
    </message>
    <message>
        <source>Unavailable · no complete measurement was recorded</source>
        <translation>Nicht verfügbar · keine vollständige Messung</translation>
    </message>
    <message>
        <source>The event-time size measurement did not yet match this app version.</source>
        <translation>Die Messung von damals gehörte noch nicht zu dieser Version.</translation>
    </message>
    <message>
        <source>This is the bundle’s last recorded logical size, not confirmed disk space freed. The app may have been moved to Trash or another location.</source>
        <translation>Dies ist die zuletzt gemessene logische Größe; dass Platz frei wurde, ist damit nicht gesagt. Das Programm kann im Papierkorb oder an einem anderen Ort sein.</translation>
    </message>
    <message>
        <source>Last measured bundle size</source>
        <translation>Zuletzt gemessene Größe</translation>
    </message>
    <message>
        <source>Not measured yet</source>
        <translation>Noch nicht gemessen</translation>
    </message>
    <message>
        <source>Size measured</source>
        <translation>Gemessene Größe</translation>
    </message>
    <message>
        <source>Size measured for version</source>
        <translation>Gemessen für Version</translation>
    </message>
    <message>
        <source>Event-time bundle size</source>
        <translation>Größe beim Ereignis</translation>
    </message>
    <message>
        <source>Recorded bundle-size change</source>
        <translation>Änderung der Größe</translation>
    </message>
    <message>
        <source>Not reported</source>
        <translation>Nicht gemeldet</translation>
    </message>
    <message>
        <source>Not present</source>
        <translation>Nicht vorhanden</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Papierkorb</translation>
    </message>
    <message>
        <source>No change</source>
        <translation>Keine Änderung</translation>
    </message>
    <message>
        <source>No recorded subfolders.</source>
        <translation>Keine aufgezeichneten Unterordner.</translation>
    </message>
    <message>
        <source>Subfolder sizes not recorded yet.</source>
        <translation>Größen der Unterordner noch nicht aufgezeichnet.</translation>
    </message>
    <message>
        <source>This event’s measurements</source>
        <translation>Messungen dieses Ereignisses</translation>
    </message>
    <message>
        <source>All Folders</source>
        <translation>Alle Ordner</translation>
    </message>
    <message>
        <source>Latest Sizes Only</source>
        <translation>Nur die letzten Größen</translation>
    </message>
    <message>
        <source>Compare with Previous Capture</source>
        <translation>Mit der vorigen Aufnahme vergleichen</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
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
        <source>Change</source>
        <translation>Änderung</translation>
    </message>
    <message>
        <source>Latest</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>Toggle recorded file changes</source>
        <translation>Geänderte Dateien ein- und ausblenden</translation>
    </message>
    <message>
        <source>Toggle subfolder sizes</source>
        <translation>Unterordner ein- und ausblenden</translation>
    </message>
    <message>
        <source>About These Sizes</source>
        <translation>Über diese Größen</translation>
    </message>
    <message>
        <source>Add folders in Monitored Folders to record their sizes.</source>
        <translation>In „Überwachte Ordner“ lassen sich Ordner hinzufügen, deren Größen aufgezeichnet werden.</translation>
    </message>
    <message>
        <source>Available Disk Space</source>
        <translation>Freier Speicherplatz</translation>
    </message>
    <message>
        <source>Operating System</source>
        <translation>Betriebssystem</translation>
    </message>
    <message>
        <source>Added %1 recent installation records from the system. This partial history covers the last 7 days; future captures will reveal new changes.</source>
        <translation>%1 Installationen aus den letzten 7 Tagen wurden aus dem Verlauf des Systems übernommen. Künftige Aufnahmen zeigen neue Änderungen.</translation>
    </message>
    <message>
        <source>Added %1 recent installation record from the system. This partial history covers the last 7 days; future captures will reveal new changes.</source>
        <translation>%1 Installation aus den letzten 7 Tagen wurde aus dem Verlauf des Systems übernommen. Künftige Aufnahmen zeigen neue Änderungen.</translation>
    </message>
    <message>
        <source>Tidemark couldn’t read its history. Your existing file has not been overwritten. %1</source>
        <translation>Tidemark konnte seinen Verlauf nicht lesen. Ihre vorhandene Datei wurde nicht überschrieben. %1</translation>
    </message>
    <message>
        <source>%1 events from your current view. Your filters and comparison mode are preserved.</source>
        <translation>%1 Ereignisse der jetzigen Ansicht. Ihre Filter und die Art des Vergleichs bleiben erhalten.</translation>
    </message>
    <message>
        <source>%1 event from your current view. Your filters and comparison mode are preserved.</source>
        <translation>%1 Ereignis der jetzigen Ansicht. Ihre Filter und die Art des Vergleichs bleiben erhalten.</translation>
    </message>
    <message>
        <source>Couldn’t capture a fresh snapshot. %1</source>
        <translation>Die Aufnahme ist misslungen. %1</translation>
    </message>
    <message>
        <source>The snapshot couldn’t be saved. %1</source>
        <translation>Der Schnappschuss konnte nicht gesichert werden. %1</translation>
    </message>
    <message>
        <source>Toggle %1 in the timeline filter</source>
        <translation>%1 im Filter der Zeitleiste</translation>
    </message>
    <message>
        <source>%1 events · observed history</source>
        <translation>%1 Ereignisse · beobachteter Verlauf</translation>
    </message>
    <message>
        <source>Couldn’t save the export. %1</source>
        <translation>Der Export konnte nicht gesichert werden. %1</translation>
    </message>
    <message>
        <source>Allocated File Storage: %1</source>
        <translation>Belegter Speicherplatz: %1</translation>
    </message>
    <message>
        <source>Delete the snapshot “%1”?</source>
        <translation>Den Schnappschuss „%1“ löschen?</translation>
    </message>
    <message>
        <source>%1 Configuration Changed</source>
        <translation>Konfiguration von %1 geändert</translation>
    </message>
    <message>
        <source>%1 Installation Recorded</source>
        <translation>Installation von %1 verzeichnet</translation>
    </message>
    <message>
        <source>%1: New Background Item</source>
        <translation>%1: neues Hintergrundobjekt</translation>
    </message>
    <message>
        <source>Requesting access to %1</source>
        <translation>Zugriff auf %1 wird geprüft</translation>
    </message>
    <message>
        <source>Next capture due: %1</source>
        <translation>Nächste Aufnahme: %1</translation>
    </message>
    <message>
        <source>%1 Contents Changed</source>
        <translation>Inhalt von %1 geändert</translation>
    </message>
    <message>
        <source>Stop monitoring %1</source>
        <translation>%1 nicht mehr überwachen</translation>
    </message>
    <message>
        <source>%1 Shrank in Size</source>
        <translation>%1 ist kleiner geworden</translation>
    </message>
    <message>
        <source>Import %1 Records</source>
        <translation>%1 Einträge übernehmen</translation>
    </message>
    <message>
        <source>Listing text: %1</source>
        <translation>Schrift der Listen: %1</translation>
    </message>
    <message>
        <source>Import %1 Record</source>
        <translation>%1 Eintrag übernehmen</translation>
    </message>
    <message>
        <source>%1 Grew in Size</source>
        <translation>%1 ist größer geworden</translation>
    </message>
    <message>
        <source>%1 Disconnected</source>
        <translation>%1 getrennt</translation>
    </message>
    <message>
        <source>%1 Installed</source>
        <translation>%1 installiert</translation>
    </message>
    <message>
        <source>%1 Connected</source>
        <translation>%1 verbunden</translation>
    </message>
    <message>
        <source>%1 Updated</source>
        <translation>%1 aktualisiert</translation>
    </message>
    <message>
        <source>%1 Removed</source>
        <translation>%1 entfernt</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Select an event to inspect its source, observation interval, and details.</source>
        <translation>Wählen Sie ein Ereignis aus, um Quelle, Beobachtungszeitraum und Einzelheiten zu sehen.</translation>
    </message>
    <message>
        <source>No system snapshots were saved during this interval. Tidemark may have been closed, your computer asleep, or a capture delayed or unsuccessful. This does not establish a shutdown or loss of folder access. Sleep/wake notifications may still have been recorded.</source>
        <translation>In dieser Zeit wurden keine Aufnahmen gesichert. Vielleicht lief Tidemark nicht, Ihr Computer schlief, oder eine Aufnahme war verspätet oder erfolglos. Das belegt weder ein Ausschalten noch den Verlust des Zugriffs auf Ordner. Ruhezustand und Aufwachen können trotzdem aufgezeichnet worden sein.</translation>
    </message>
    <message>
        <source>This record does not establish whether the installation was new or an update, its previous version, or whether the software is still present. The system’s history does not cover every installation method.</source>
        <translation>Dieser Eintrag belegt nicht, ob es eine neue Installation oder eine Aktualisierung war, welche Version vorher da war oder ob die Software noch vorhanden ist. Der Verlauf des Systems erfasst nicht jede Art der Installation.</translation>
    </message>
    <message>
        <source>Recorded sizes · — unknown · ≥ measured subtotal
All changes shown, regardless of timeline thresholds.</source>
        <translation>Aufgezeichnete Größen · — unbekannt · ≥ gemessener Teil
Alle Änderungen, unabhängig von den Schwellen der Zeitleiste.</translation>
    </message>
    <message>
        <source>A definition on disk does not confirm that this item is enabled or running.</source>
        <translation>Dass es auf der Festplatte definiert ist, belegt nicht, dass es eingeschaltet ist oder läuft.</translation>
    </message>
    <message>
        <source>Nothing is shown or captured until it can be read. Your existing file has not been overwritten.</source>
        <translation>Bis er gelesen werden kann, wird nichts gezeigt und nichts aufgenommen. Ihre vorhandene Datei wurde nicht überschrieben.</translation>
    </message>
    <message>
        <source>Tidemark records these notifications only while running. This is not a complete power history and does not include display-only sleep.</source>
        <translation>Tidemark zeichnet diese Meldungen nur auf, solange es läuft. Das ist kein vollständiger Verlauf, und es umfasst nicht, dass nur der Bildschirm schläft.</translation>
    </message>
    <message>
        <source>Recorded while environment history is enabled and Tidemark is awake and running. Changes settle for 2 seconds. Startup, wake, and re-enabling establish a baseline; events during observation gaps cannot be reconstructed.</source>
        <translation>Aufgezeichnet, solange Tidemark läuft, der Computer wach und der Verlauf der Umgebung eingeschaltet ist. Änderungen gelten nach 2 Sekunden. Start, Aufwachen und Einschalten bilden einen neuen Ausgangspunkt; was in Lücken der Beobachtung geschah, lässt sich nicht rekonstruieren.</translation>
    </message>
    <message>
        <source>A legacy workspace notification was recorded. It does not establish that the user requested a shutdown or logout and is excluded from the activity timeline.</source>
        <translation>Eine Meldung einer früheren Version wurde aufgezeichnet. Sie belegt nicht, dass Sie sich abmelden oder ausschalten wollten, und steht nicht in der Zeitleiste.</translation>
    </message>
    <message>
        <source>A visible mounted volume appeared or disappeared. This may be an external drive, disk image, or network volume; it does not establish that hardware was plugged in or safely ejected.</source>
        <translation>Ein sichtbares Laufwerk kam hinzu oder verschwand. Das kann ein externes Laufwerk, ein Abbild oder ein Netzlaufwerk sein; es belegt nicht, dass ein Gerät angesteckt oder sicher entfernt wurde.</translation>
    </message>
    <message>
        <source>The displays available to the system changed. Docking, mirroring, or virtual displays can affect this inventory. No screen content or display serial numbers are collected.</source>
        <translation>Die Bildschirme, die dem System zur Verfügung stehen, haben sich geändert. Dockingstationen, Spiegelung und virtuelle Bildschirme wirken sich darauf aus. Weder Bildschirminhalte noch Seriennummern werden erfasst.</translation>
    </message>
    <message>
        <source>Recorded only while Tidemark is awake and running with network history enabled. Changes lasting less than 2 seconds are ignored. A new starting point is established after sleep, relaunch, or re-enabling history.</source>
        <translation>Nur aufgezeichnet, solange Tidemark läuft, der Computer wach und der Netzwerkverlauf eingeschaltet ist. Änderungen von weniger als 2 Sekunden zählen nicht. Nach Ruhezustand, Neustart oder Einschalten beginnt ein neuer Ausgangspunkt.</translation>
    </message>
    <message>
        <source>A connection change was observed for a paired Bluetooth device known to the system. Brief reconnects are filtered. This is not a complete history of Bluetooth Low Energy devices or nearby devices.</source>
        <translation>Die Verbindung eines gekoppelten Bluetooth-Geräts, das dem System bekannt ist, hat sich geändert. Kurze Unterbrechungen zählen nicht. Das ist kein vollständiger Verlauf der Bluetooth-Geräte in der Nähe.</translation>
    </message>
    <message>
        <source>Recorded only while Tidemark is awake and running with Bluetooth history enabled and permitted. Reconnects shorter than 5 seconds are ignored. Existing connections at startup are not new events.</source>
        <translation>Nur aufgezeichnet, solange Tidemark läuft, der Computer wach und der Bluetooth-Verlauf eingeschaltet und erlaubt ist. Unterbrechungen von weniger als 5 Sekunden zählen nicht. Verbindungen, die beim Start bestehen, sind keine neuen Ereignisse.</translation>
    </message>
    <message>
        <source>Recorded while Tidemark is awake and running with network history enabled. The new link state must remain stable for 2 seconds; shorter reconnect fluctuations are filtered. Initial and unavailable link metadata establish a new starting point; the system may coalesce very rapid transitions.</source>
        <translation>Aufgezeichnet, solange Tidemark läuft, der Computer wach und der Netzwerkverlauf eingeschaltet ist. Der neue Zustand der Verbindung muss 2 Sekunden bestehen; kürzere Schwankungen zählen nicht. Erste und fehlende Angaben bilden einen neuen Ausgangspunkt; sehr schnelle Wechsel kann das System zusammenfassen.</translation>
    </message>
    <message>
        <source>Recorded while Tidemark is awake and running with Bluetooth history enabled and permitted. The initial radio state and unknown or unavailable states are not power events. Sleep, relaunch, or re-enabling history establishes a new starting point.</source>
        <translation>Aufgezeichnet, solange Tidemark läuft, der Computer wach und der Bluetooth-Verlauf eingeschaltet und erlaubt ist. Der erste Zustand und unbekannte oder fehlende Zustände sind keine Ereignisse. Nach Ruhezustand, Neustart oder Einschalten beginnt ein neuer Ausgangspunkt.</translation>
    </message>
    <message>
        <source>Recorded while Tidemark is awake and running with battery history enabled. Changes settle for 2 seconds. Initial, missing, and post-sleep observations establish a new starting point. Low battery is recorded below 20%, then rearmed after recovery to at least 25% on external power.</source>
        <translation>Aufgezeichnet, solange Tidemark läuft, der Computer wach und der Akkuverlauf eingeschaltet ist. Änderungen gelten nach 2 Sekunden. Erste und fehlende Beobachtungen und solche nach dem Ruhezustand bilden einen neuen Ausgangspunkt. Ein niedriger Ladestand wird unter 20 % aufgezeichnet, und erst dann wieder, wenn der Akku am Strom mindestens 25 % erreicht hat.</translation>
    </message>
    <message>
        <source>Recorded while Tidemark is awake and running with power and battery history enabled. Initial observations, relaunch, and wake establish a new starting point. Duplicate notifications do not create events.</source>
        <translation>Aufgezeichnet, solange Tidemark läuft, der Computer wach und der Verlauf von Strom und Akku eingeschaltet ist. Erste Beobachtungen, Neustart und Aufwachen bilden einen neuen Ausgangspunkt. Doppelte Meldungen sind keine Ereignisse.</translation>
    </message>
    <message>
        <source>The folder could not be opened. It may be missing or access may be unavailable.</source>
        <translation>Der Ordner konnte nicht geöffnet werden. Vielleicht fehlt er, oder der Zugriff ist nicht möglich.</translation>
    </message>
    <message>
        <source>Some entries could not be read.</source>
        <translation>Manche Einträge konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The scan reached its time limit. Folder access may be valid; the size measurement was not completed.</source>
        <translation>Die Messung erreichte ihre Zeitgrenze. Der Zugriff auf den Ordner kann in Ordnung sein; die Größe wurde nicht zu Ende gemessen.</translation>
    </message>
    <message>
        <source>The scan reached its entry limit. Folder access may be valid; the size measurement was not completed.</source>
        <translation>Die Messung erreichte ihre Grenze an Einträgen. Der Zugriff auf den Ordner kann in Ordnung sein; die Größe wurde nicht zu Ende gemessen.</translation>
    </message>
    <message>
        <source>A cloud-only directory has no locally available listing. Tidemark does not download its contents to measure size.</source>
        <translation>Der Inhalt eines Ordners liegt nur im Netz. Tidemark lädt nichts herunter, um die Größe zu messen.</translation>
    </message>
    <message>
        <source>The scan was cancelled.</source>
        <translation>Die Messung wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Measurement paused at a work limit and will continue on a later check.</source>
        <translation>Die Messung macht eine Pause und wird bei einer späteren Aufnahme fortgesetzt.</translation>
    </message>
    <message>
        <source>Download metadata supplied by the desktop. A last-used date is not proof of reading a document. Missing metadata is unknown.</source>
        <translation>Angaben des Desktops zum Herunterladen. Der Zeitpunkt der letzten Nutzung beweist nicht, dass die Datei gelesen wurde. Was fehlt, ist unbekannt.</translation>
    </message>
    <message>
        <source>Observed application launch while Tidemark was recording.</source>
        <translation>Start eines Programms, während Tidemark aufzeichnete.</translation>
    </message>
    <message>
        <source>Observed application termination while Tidemark was recording. Closing a window alone does not quit the application.</source>
        <translation>Ende eines Programms, während Tidemark aufzeichnete. Wer nur ein Fenster schließt, beendet das Programm nicht.</translation>
    </message>
    <message>
        <source>Legacy foreground-time record. Tidemark no longer collects foreground sessions.</source>
        <translation>Nutzungsdauer aus einer früheren Version. Tidemark erfasst sie nicht mehr.</translation>
    </message>
    <message>
        <source>Captured after clipboard history was enabled. Source is the frontmost application at capture time and may differ from the writer. Sensitive marked items and excluded apps are skipped.</source>
        <translation>Aufgenommen, nachdem der Verlauf der Zwischenablage eingeschaltet wurde. Als Quelle gilt das Programm, das dabei im Vordergrund war; kopiert haben kann ein anderes. Als vertraulich Markiertes und ausgeschlossene Programme werden übergangen.</translation>
    </message>
    <message>
        <source>Some child folders have no completed measurement.</source>
        <translation>Manche Unterordner wurden noch nicht zu Ende gemessen.</translation>
    </message>
    <message>
        <source>Application bundles only; other files in this folder are not included.</source>
        <translation>Nur Programmpakete; andere Dateien in diesem Ordner sind nicht enthalten.</translation>
    </message>
    <message>
        <source>Another storage measurement is still running.</source>
        <translation>Eine andere Messung läuft noch.</translation>
    </message>
    <message>
        <source>Background items: the crontabs of users are not observed. Only the program crontab may read them.</source>
        <translation>Hintergrundobjekte: Die Crontabs der Benutzer werden nicht beobachtet. Nur das Programm crontab darf sie lesen.</translation>
    </message>
    <message>
        <source>Application storage records individual app bundles, not all files in Applications. Last-measured sizes may have different dates; unfinished bundles do not contribute a size.</source>
        <translation>Gemessen werden einzelne Programmpakete, nicht alle Dateien in Programme. Die letzten Messungen können von verschiedenen Tagen sein; was nicht zu Ende gemessen ist, zählt nicht mit.</translation>
    </message>
    <message>
        <source>The folder has more than 10,000 files of its own. Their total size is recorded, but not their names.</source>
        <translation>Der Ordner hat selbst mehr als 10.000 Dateien. Ihre Gesamtgröße wird aufgezeichnet, ihre Namen nicht.</translation>
    </message>
    <message>
        <source>The overall storage scan was paused or reached its time limit. No size comparison was made.</source>
        <translation>Die Messung aller Ordner wurde angehalten oder erreichte ihre Zeitgrenze. Die Größen wurden nicht verglichen.</translation>
    </message>
    <message>
        <source>Could not completely read or save this folder.</source>
        <translation>Dieser Ordner konnte nicht vollständig gelesen oder gesichert werden.</translation>
    </message>
    <message>
        <source>Some child-folder sizes are awaiting refresh. The displayed total retains their earlier dated measurements.</source>
        <translation>Die Größen mancher Unterordner werden noch aufgefrischt. Die gezeigte Summe enthält ihre früheren Messungen.</translation>
    </message>
    <message>
        <source>Scanning Application Bundles…</source>
        <translation>Programmpakete werden gemessen …</translation>
    </message>
    <message>
        <source>Scanning Applications and Background Items…</source>
        <translation>Programme und Hintergrundobjekte werden gelesen …</translation>
    </message>
    <message>
        <source>The data folder was removed or replaced while Tidemark was running; start Tidemark again.</source>
        <translation>Der Datenordner wurde entfernt oder ersetzt, während Tidemark lief; starten Sie Tidemark neu.</translation>
    </message>
    <message>
        <source>No recent installation records were available. Tidemark will record changes from now on.</source>
        <translation>Es gab keine Einträge über neue Installationen. Von jetzt an zeichnet Tidemark Änderungen auf.</translation>
    </message>
    <message>
        <source>Recent history couldn’t be imported. New changes will still be recorded. You can retry using Import recent history…</source>
        <translation>Der letzte Verlauf konnte nicht übernommen werden. Neue Änderungen werden trotzdem aufgezeichnet. Versuchen Sie es mit „Letzten Verlauf übernehmen …“ noch einmal.</translation>
    </message>
    <message>
        <source>Activity history couldn’t be opened. The existing file has not been replaced.</source>
        <translation>Der Aktivitätsverlauf konnte nicht geöffnet werden. Die vorhandene Datei wurde nicht ersetzt.</translation>
    </message>
    <message>
        <source>Activity history could not be saved. Activity history may be incomplete.</source>
        <translation>Der Aktivitätsverlauf konnte nicht gesichert werden. Er kann unvollständig sein.</translation>
    </message>
    <message>
        <source>The settings are damaged, so a copy of them is used.</source>
        <translation>Die Einstellungen sind beschädigt, deshalb gilt eine Kopie davon.</translation>
    </message>
    <message>
        <source>The settings are damaged, so the defaults are used.</source>
        <translation>Die Einstellungen sind beschädigt, deshalb gelten die Voreinstellungen.</translation>
    </message>
    <message>
        <source>Updated folder access couldn’t be saved.</source>
        <translation>Der geänderte Zugriff auf Ordner konnte nicht gesichert werden.</translation>
    </message>
    <message>
        <source>No Applications folder has active access. Choose one in Settings to track app changes.</source>
        <translation>Kein Ordner mit Programmen ist erlaubt. Wählen Sie in den Einstellungen einen aus, damit Änderungen an Programmen festgehalten werden.</translation>
    </message>
    <message>
        <source>Background definitions are not observed until you allow a folder of background agents or system daemons in Settings.</source>
        <translation>Hintergrundobjekte werden erst beobachtet, wenn Sie in den Einstellungen einen Ordner mit Hintergrundprogrammen oder Systemdiensten erlauben.</translation>
    </message>
    <message>
        <source>Folder does not currently exist.</source>
        <translation>Den Ordner gibt es zurzeit nicht.</translation>
    </message>
    <message>
        <source>This location is not a folder.</source>
        <translation>Das ist kein Ordner.</translation>
    </message>
    <message>
        <source>Saved folder access couldn’t be read. Choose folders again to restore observation.</source>
        <translation>Der gesicherte Zugriff auf Ordner konnte nicht gelesen werden. Wählen Sie die Ordner noch einmal aus.</translation>
    </message>
    <message>
        <source>The settings can’t be saved.</source>
        <translation>Die Einstellungen können nicht gesichert werden.</translation>
    </message>
    <message>
        <source>All selected folders are ready.</source>
        <translation>Alle ausgewählten Ordner sind bereit.</translation>
    </message>
    <message>
        <source>Folder access was unavailable during the check.</source>
        <translation>Bei der Prüfung war kein Zugriff auf den Ordner möglich.</translation>
    </message>
    <message>
        <source>The clipboard history can’t be changed before it has been read.</source>
        <translation>Der Verlauf der Zwischenablage kann erst geändert werden, wenn er gelesen ist.</translation>
    </message>
    <message>
        <source>The clipboard history can’t be changed, because the last change could not be saved. Start Tidemark again.</source>
        <translation>Der Verlauf der Zwischenablage kann nicht geändert werden, weil die letzte Änderung nicht gesichert werden konnte. Starten Sie Tidemark neu.</translation>
    </message>
    <message>
        <source>New activity history could not be saved. Collection stopped to protect the existing file.</source>
        <translation>Neue Aktivitäten konnten nicht gesichert werden. Um die vorhandene Datei zu schützen, wird nichts mehr erfasst.</translation>
    </message>
    <message>
        <source>About this event</source>
        <translation>Über dieses Ereignis</translation>
    </message>
    <message>
        <source>Close details</source>
        <translation>Einzelheiten schließen</translation>
    </message>
    <message>
        <source>STATE DIFFERENCE</source>
        <translation>UNTERSCHIED DER ZUSTÄNDE</translation>
    </message>
    <message>
        <source>CHANGE DETAILS</source>
        <translation>ÄNDERUNGEN IM EINZELNEN</translation>
    </message>
    <message>
        <source>System service</source>
        <translation>Systemdienst</translation>
    </message>
    <message>
        <source>Connection cost flag</source>
        <translation>Kennzeichnung der Verbindungskosten</translation>
    </message>
    <message>
        <source>System Agents</source>
        <translation>Hintergrundprogramme des Systems</translation>
    </message>
    <message>
        <source>System Daemons</source>
        <translation>Systemdienste</translation>
    </message>
    <message>
        <source>Developer Data</source>
        <translation>Entwicklerdaten</translation>
    </message>
    <message>
        <source>Version not recorded</source>
        <translation>Version nicht aufgezeichnet</translation>
    </message>
    <message>
        <source>Background items</source>
        <translation>Hintergrundobjekte</translation>
    </message>
    <message>
        <source>The History Couldn’t Be Read</source>
        <translation>Der Verlauf konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>Launched</source>
        <translation>Gestartet</translation>
    </message>
    <message>
        <source>1 event · observed history</source>
        <translation>1 Ereignis · beobachteter Verlauf</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beendet</translation>
    </message>
    <message>
        <source>Your background agents</source>
        <translation>Ihre Hintergrundprogramme</translation>
    </message>
    <message>
        <source>System background daemons</source>
        <translation>Systemdienste im Hintergrund</translation>
    </message>
    <message>
        <source>Optional software</source>
        <translation>Zusätzliche Software</translation>
    </message>
    <message>
        <source>Local software</source>
        <translation>Lokale Software</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
    <message>
        <source>Less Space Available</source>
        <translation>Weniger Speicher frei</translation>
    </message>
    <message>
        <source>Space Freed Up</source>
        <translation>Speicher frei geworden</translation>
    </message>
    <message>
        <source>Trash Is Now Empty</source>
        <translation>Papierkorb ist jetzt leer</translation>
    </message>
    <message>
        <source>New Background Item</source>
        <translation>Neues Hintergrundobjekt</translation>
    </message>
    <message>
        <source>Background Item Removed</source>
        <translation>Hintergrundobjekt entfernt</translation>
    </message>
    <message>
        <source>Background Item Changed</source>
        <translation>Hintergrundobjekt geändert</translation>
    </message>
    <message>
        <source>Captures Resumed</source>
        <translation>Wieder aufgenommen</translation>
    </message>
    <message>
        <source>Operating System Changed</source>
        <translation>Betriebssystem geändert</translation>
    </message>
    <message>
        <source>This computer has no Bluetooth adapter.</source>
        <translation>Dieser Computer hat keinen Bluetooth-Adapter.</translation>
    </message>
    <message>
        <source>UPower, the service that reports batteries, does not run.</source>
        <translation>Der Dienst UPower, der Akkus meldet, läuft nicht.</translation>
    </message>
    <message>
        <source>Homebrew is not installed.</source>
        <translation>Homebrew ist nicht installiert.</translation>
    </message>
    <message>
        <source>No folder of crash reports is there.</source>
        <translation>Es gibt keinen Ordner für Absturzberichte.</translation>
    </message>
    <message>
        <source>NetworkManager, which knows the names of Wi-Fi networks, is not installed.</source>
        <translation>Der NetworkManager, der die Namen der WLANs kennt, ist nicht installiert.</translation>
    </message>
    <message>
        <source>NetworkManager, which knows the names of Wi-Fi networks, does not run.</source>
        <translation>Der NetworkManager, der die Namen der WLANs kennt, läuft nicht.</translation>
    </message>
    <message>
        <source>The Bluetooth service BlueZ does not run.</source>
        <translation>Der Bluetooth-Dienst BlueZ läuft nicht.</translation>
    </message>
    <message>
        <source>Storage Over Time</source>
        <translation>Speicherverlauf</translation>
    </message>
    <message>
        <source>Map of Folder Sizes</source>
        <translation>Karte der Ordnergrößen</translation>
    </message>
    <message>
        <source>Not completely measured:</source>
        <translation>Nicht vollständig gemessen:</translation>
    </message>
    <message>
        <source>What Grew</source>
        <translation>Was gewachsen ist</translation>
    </message>
    <message>
        <source>Since You Last Looked</source>
        <translation>Seit Ihrem letzten Besuch</translation>
    </message>
    <message>
        <source>No complete size is known in this time. Sizes are recorded with each capture.</source>
        <translation>Aus dieser Zeit ist keine vollständige Größe bekannt. Größen werden mit jeder Aufnahme festgehalten.</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Freier Platz</translation>
    </message>
    <message>
        <source>3 months</source>
        <translation>3 Monate</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>1 Jahr</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Wann</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Anmerkung</translation>
    </message>
    <message>
        <source>unchanged</source>
        <translation>unverändert</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Gone</source>
        <translation>Entfernt</translation>
    </message>
    <message>
        <source>New volume</source>
        <translation>Neuer Datenträger</translation>
    </message>
    <message>
        <source>Measured in another way</source>
        <translation>Anders gemessen</translation>
    </message>
    <message>
        <source>computer asleep</source>
        <translation>Computer im Ruhezustand</translation>
    </message>
    <message>
        <source>Tidemark not running</source>
        <translation>Tidemark lief nicht</translation>
    </message>
    <message>
        <source>recording paused</source>
        <translation>Aufzeichnung angehalten</translation>
    </message>
    <message>
        <source>Free space is the same.</source>
        <translation>Der freie Platz ist gleich geblieben.</translation>
    </message>
    <message>
        <source>The folders you monitor have the same size.</source>
        <translation>Die überwachten Ordner sind gleich groß geblieben.</translation>
    </message>
    <message>
        <source>No size is known at both ends of this period.</source>
        <translation>Für Anfang und Ende dieser Zeit ist keine Größe bekannt.</translation>
    </message>
    <message>
        <source>Under a minute</source>
        <translation>Unter einer Minute</translation>
    </message>
    <message>
        <source>%1 · since %2</source>
        <translation>%1 · seit %2</translation>
    </message>
    <message>
        <source>%1 hr %2 min</source>
        <translation>%1 Std. %2 Min.</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 Min.</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>%1 byte</source>
        <translation>%1 Byte</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1.%2 MB</source>
        <translation>%1,%2 MB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1.%2 GB</source>
        <translation>%1,%2 GB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1.%2 TB</source>
        <translation>%1,%2 TB</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1 TB</translation>
    </message>
    <message>
        <source>%1.%2 PB</source>
        <translation>%1,%2 PB</translation>
    </message>
    <message>
        <source>%1 PB</source>
        <translation>%1 PB</translation>
    </message>
    <message>
        <source>%1.%2 EB</source>
        <translation>%1,%2 EB</translation>
    </message>
    <message>
        <source>%1 EB</source>
        <translation>%1 EB</translation>
    </message>
    <message>
        <source>less than a minute</source>
        <translation>weniger als eine Minute</translation>
    </message>
    <message>
        <source>%1 less free, although the folders you monitor shrank by %2.</source>
        <translation>%1 weniger frei, obwohl die überwachten Ordner um %2 geschrumpft sind.</translation>
    </message>
    <message>
        <source>%1 more free, although the folders you monitor grew by %2.</source>
        <translation>%1 mehr frei, obwohl die überwachten Ordner um %2 gewachsen sind.</translation>
    </message>
    <message>
        <source>%1 less free; the folders you monitor have not changed.</source>
        <translation>%1 weniger frei; die überwachten Ordner haben sich nicht geändert.</translation>
    </message>
    <message>
        <source>%1 more free; the folders you monitor have not changed.</source>
        <translation>%1 mehr frei; die überwachten Ordner haben sich nicht geändert.</translation>
    </message>
    <message>
        <source>%1 less free; the folders you monitor grew by %2.</source>
        <translation>%1 weniger frei; die überwachten Ordner sind um %2 gewachsen.</translation>
    </message>
    <message>
        <source>%1 more free; the folders you monitor shrank by %2.</source>
        <translation>%1 mehr frei; die überwachten Ordner sind um %2 geschrumpft.</translation>
    </message>
    <message>
        <source>%1 less free; %2 of it in folders you monitor.</source>
        <translation>%1 weniger frei, davon %2 in überwachten Ordnern.</translation>
    </message>
    <message>
        <source>%1 more free; %2 of it in folders you monitor.</source>
        <translation>%1 mehr frei, davon %2 in überwachten Ordnern.</translation>
    </message>
    <message>
        <source>The folders you monitor shrank by %1.</source>
        <translation>Die überwachten Ordner sind um %1 geschrumpft.</translation>
    </message>
    <message>
        <source>The folders you monitor grew by %1.</source>
        <translation>Die überwachten Ordner sind um %1 gewachsen.</translation>
    </message>
    <message>
        <source>No comparable size at both ends: %1.</source>
        <translation>Ohne vergleichbare Größe an beiden Enden: %1.</translation>
    </message>
    <message>
        <source>Nothing was observed for %1, in %2 gaps.</source>
        <translation>%1 lang wurde nichts beobachtet, in %2 Lücken.</translation>
    </message>
    <message>
        <source>Nothing was observed for %1.</source>
        <translation>%1 lang wurde nichts beobachtet.</translation>
    </message>
    <message>
        <source>A place was not read for %1</source>
        <translation>%1 lang wurde ein Ort nicht gelesen</translation>
    </message>
    <message>
        <source>Not observed %1 times, %2 in total</source>
        <translation>%1-mal nicht beobachtet, zusammen %2</translation>
    </message>
    <message>
        <source>Nothing observed for %1</source>
        <translation>%1 lang nichts beobachtet</translation>
    </message>
    <message>
        <source>%1 without a size</source>
        <translation>%1 ohne Größe</translation>
    </message>
    <message>
        <source>New volume: %1</source>
        <translation>Neuer Datenträger: %1</translation>
    </message>
    <message>
        <source>Snapshot: %1</source>
        <translation>Schnappschuss: %1</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>%1 less free.</source>
        <translation>%1 weniger frei.</translation>
    </message>
    <message>
        <source>%1 more free.</source>
        <translation>%1 mehr frei.</translation>
    </message>
    <message>
        <source>%1, since %2</source>
        <translation>%1, seit %2</translation>
    </message>
    <message>
        <source>%1 since %2</source>
        <translation>%1 seit %2</translation>
    </message>
    <message>
        <source>%1 years</source>
        <translation>%1 Jahre</translation>
    </message>
    <message>
        <source>%1 year</source>
        <translation>%1 Jahr</translation>
    </message>
    <message>
        <source>%1 months</source>
        <translation>%1 Monate</translation>
    </message>
    <message>
        <source>%1 month</source>
        <translation>%1 Monat</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 Tage</translation>
    </message>
    <message>
        <source>%1 day</source>
        <translation>%1 Tag</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 Stunden</translation>
    </message>
    <message>
        <source>%1 hour</source>
        <translation>%1 Stunde</translation>
    </message>
    <message>
        <source>%1 minutes</source>
        <translation>%1 Minuten</translation>
    </message>
    <message>
        <source>%1 minute</source>
        <translation>%1 Minute</translation>
    </message>
    <message>
        <source>Notify about new background items</source>
        <translation>Über neue Hintergrundobjekte benachrichtigen</translation>
    </message>
    <message>
        <source>Custom: %1 days</source>
        <translation>Eigener Zeitraum: %1 Tage</translation>
    </message>
    <message>
        <source>Custom: %1 day</source>
        <translation>Eigener Zeitraum: %1 Tag</translation>
    </message>
    <message>
        <source>Other installer</source>
        <translation>Andere Installation</translation>
    </message>
    <message>
        <source>1 event</source>
        <translation>1 Ereignis</translation>
    </message>
    <message>
        <source>1 file</source>
        <translation>1 Datei</translation>
    </message>
    <message>
        <source>1 download</source>
        <translation>1 Download</translation>
    </message>
    <message>
        <source>1 clip</source>
        <translation>1 kopierter Eintrag</translation>
    </message>
    <message>
        <source>in the timeline filter</source>
        <translation>im Filter der Zeitleiste</translation>
    </message>
    <message>
        <source>important</source>
        <translation>wichtig</translation>
    </message>
    <message>
        <source>monitored</source>
        <translation>überwacht</translation>
    </message>
    <message>
        <source>not monitored</source>
        <translation>nicht überwacht</translation>
    </message>
    <message>
        <source>no change</source>
        <translation>keine Änderung</translation>
    </message>
    <message>
        <source>change unknown</source>
        <translation>Änderung unbekannt</translation>
    </message>
    <message>
        <source>unknown size</source>
        <translation>Größe unbekannt</translation>
    </message>
    <message>
        <source>before unknown size</source>
        <translation>vorher unbekannte Größe</translation>
    </message>
    <message>
        <source>after unknown size</source>
        <translation>nachher unbekannte Größe</translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation>0 KB</translation>
    </message>
    <message>
        <source>before Zero KB</source>
        <translation>vorher 0 KB</translation>
    </message>
    <message>
        <source>after Zero KB</source>
        <translation>nachher 0 KB</translation>
    </message>
    <message>
        <source>Observed empty</source>
        <translation>leer vorgefunden</translation>
    </message>
    <message>
        <source>The computer was asleep.</source>
        <translation>Der Computer war im Ruhezustand.</translation>
    </message>
    <message>
        <source>Tidemark was not running.</source>
        <translation>Tidemark lief nicht.</translation>
    </message>
    <message>
        <source>Recording was paused.</source>
        <translation>Die Aufzeichnung war angehalten.</translation>
    </message>
    <message>
        <source>Before: measured %1</source>
        <translation>Vorher: gemessen am %1</translation>
    </message>
    <message>
        <source>After: measured %1</source>
        <translation>Nachher: gemessen am %1</translation>
    </message>
    <message>
        <source>Last measured size: %1</source>
        <translation>Zuletzt gemessene Größe: %1</translation>
    </message>
    <message>
        <source>Sleep interval: %1</source>
        <translation>Ruhezeit: %1</translation>
    </message>
    <message>
        <source>Size recorded %1</source>
        <translation>Größe vom %1</translation>
    </message>
    <message>
        <source>Battery at %1%</source>
        <translation>Akku bei %1 %</translation>
    </message>
    <message>
        <source>Previously %1 items</source>
        <translation>Vorher %1 Objekte</translation>
    </message>
    <message>
        <source>Previously %1 item</source>
        <translation>Vorher %1 Objekt</translation>
    </message>
    <message>
        <source>Previously %1</source>
        <translation>Vorher %1</translation>
    </message>
    <message>
        <source>%1 decrease in free space</source>
        <translation>%1 weniger freier Platz</translation>
    </message>
    <message>
        <source>%1 increase in free space</source>
        <translation>%1 mehr freier Platz</translation>
    </message>
    <message>
        <source>%1 remaining</source>
        <translation>%1 frei</translation>
    </message>
    <message>
        <source>%1 smaller items</source>
        <translation>%1 kleinere Objekte</translation>
    </message>
    <message>
        <source>%1 downloads</source>
        <translation>%1 Downloads</translation>
    </message>
    <message>
        <source>%1 events</source>
        <translation>%1 Ereignisse</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 Dateien</translation>
    </message>
    <message>
        <source>%1 clips</source>
        <translation>%1 kopierte Einträge</translation>
    </message>
    <message>
        <source>%1 – now</source>
        <translation>%1 – jetzt</translation>
    </message>
    <message>
        <source>Snapshot %1</source>
        <translation>Schnappschuss %1</translation>
    </message>
    <message>
        <source>after %1 without a size</source>
        <translation>nach %1 ohne Größe</translation>
    </message>
    <message>
        <source>before at least %1</source>
        <translation>vorher mindestens %1</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>grew by %1</source>
        <translation>um %1 gewachsen</translation>
    </message>
    <message>
        <source>shrank by %1</source>
        <translation>um %1 geschrumpft</translation>
    </message>
    <message>
        <source>from %1 to %2</source>
        <translation>von %1 bis %2</translation>
    </message>
    <message>
        <source>before %1</source>
        <translation>vorher %1</translation>
    </message>
    <message>
        <source>after %1</source>
        <translation>nachher %1</translation>
    </message>
    <message>
        <source>change %1</source>
        <translation>Änderung %1</translation>
    </message>
    <message>
        <source>last %1.</source>
        <translation>zuletzt %1.</translation>
    </message>
    <message>
        <source>Net %1</source>
        <translation>Insgesamt %1</translation>
    </message>
    <message>
        <source>User service</source>
        <translation>Dienst des Benutzers</translation>
    </message>
    <message>
        <source>Search history · %1</source>
        <translation>Verlauf durchsuchen · %1</translation>
    </message>
    <message>
        <source>Critical Thermal Pressure</source>
        <translation>Kritische Wärmebelastung</translation>
    </message>
    <message>
        <source>High Thermal Pressure</source>
        <translation>Hohe Wärmebelastung</translation>
    </message>
    <message>
        <source>Thermal Pressure Eased</source>
        <translation>Wärmebelastung lässt nach</translation>
    </message>
    <message>
        <source>Bluetooth Connection Changed</source>
        <translation>Bluetooth-Verbindung geändert</translation>
    </message>
    <message>
        <source>Wi-Fi Disconnected</source>
        <translation>WLAN getrennt</translation>
    </message>
    <message>
        <source>Wi-Fi Network Changed</source>
        <translation>WLAN-Netz gewechselt</translation>
    </message>
    <message>
        <source>Wi-Fi Connected</source>
        <translation>WLAN verbunden</translation>
    </message>
    <message>
        <source>Computer Going to Sleep</source>
        <translation>Computer geht in den Ruhezustand</translation>
    </message>
    <message>
        <source>Computer Woke Up</source>
        <translation>Computer aufgewacht</translation>
    </message>
    <message>
        <source>Unverified Session-End Notification</source>
        <translation>Unbestätigte Meldung vom Ende der Sitzung</translation>
    </message>
    <message>
        <source>Network Connection Changed</source>
        <translation>Netzwerkverbindung geändert</translation>
    </message>
    <message>
        <source>Network Connection Unavailable</source>
        <translation>Netzwerkverbindung nicht verfügbar</translation>
    </message>
    <message>
        <source>Network Connection Available</source>
        <translation>Netzwerkverbindung verfügbar</translation>
    </message>
    <message>
        <source>Bluetooth Turned On</source>
        <translation>Bluetooth eingeschaltet</translation>
    </message>
    <message>
        <source>Bluetooth Turned Off</source>
        <translation>Bluetooth ausgeschaltet</translation>
    </message>
    <message>
        <source>Battery Changed</source>
        <translation>Akku geändert</translation>
    </message>
    <message>
        <source>Low Power Mode Enabled</source>
        <translation>Stromsparmodus eingeschaltet</translation>
    </message>
    <message>
        <source>Low Power Mode Disabled</source>
        <translation>Stromsparmodus ausgeschaltet</translation>
    </message>
    <message>
        <source>Recorded while Tidemark was running</source>
        <translation>Festgehalten, während Tidemark lief</translation>
    </message>
    <message>
        <source>Wi-Fi link</source>
        <translation>WLAN-Verbindung</translation>
    </message>
    <message>
        <source>Paired device</source>
        <translation>Gekoppeltes Gerät</translation>
    </message>
    <message>
        <source>Power Connected</source>
        <translation>Stromversorgung verbunden</translation>
    </message>
    <message>
        <source>Switched to Battery</source>
        <translation>Auf Akku umgeschaltet</translation>
    </message>
    <message>
        <source>Battery Fully Charged</source>
        <translation>Akku vollständig geladen</translation>
    </message>
    <message>
        <source>Battery Low</source>
        <translation>Akku schwach</translation>
    </message>
    <message>
        <source>Selected configuration file</source>
        <translation>Ausgewählte Konfigurationsdatei</translation>
    </message>
    <message>
        <source>Content fingerprint changed</source>
        <translation>Prüfsumme des Inhalts geändert</translation>
    </message>
    <message>
        <source>New Diagnostic Report</source>
        <translation>Neuer Diagnosebericht</translation>
    </message>
    <message>
        <source>An extended interval without saved captures</source>
        <translation>Längere Zeit ohne gesicherte Aufnahmen</translation>
    </message>
    <message>
        <source>no complete size is known in this time.</source>
        <translation>In dieser Zeit ist keine vollständige Größe bekannt.</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Angelegt</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Beendet</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Rich Text</source>
        <translation>Formatierter Text</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Wi-Fi</source>
        <translation>WLAN</translation>
    </message>
    <message>
        <source>Cellular</source>
        <translation>Mobilfunk</translation>
    </message>
    <message>
        <source>Other network</source>
        <translation>Anderes Netz</translation>
    </message>
    <message>
        <source>Available</source>
        <translation>Verfügbar</translation>
    </message>
    <message>
        <source>Unavailable</source>
        <translation>Nicht verfügbar</translation>
    </message>
    <message>
        <source>Connection required</source>
        <translation>Verbindung erforderlich</translation>
    </message>
    <message>
        <source>Phone</source>
        <translation>Telefon</translation>
    </message>
    <message>
        <source>Audio / video accessory</source>
        <translation>Audio- oder Videogerät</translation>
    </message>
    <message>
        <source>Input accessory</source>
        <translation>Eingabegerät</translation>
    </message>
    <message>
        <source>Imaging accessory</source>
        <translation>Bildgerät</translation>
    </message>
    <message>
        <source>Wearable</source>
        <translation>Am Körper getragenes Gerät</translation>
    </message>
    <message>
        <source>Toy</source>
        <translation>Spielzeug</translation>
    </message>
    <message>
        <source>Health accessory</source>
        <translation>Gesundheitsgerät</translation>
    </message>
    <message>
        <source>Nominal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>Leicht erhöht</translation>
    </message>
    <message>
        <source>Serious</source>
        <translation>Hoch</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>Kritisch</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Offen</translation>
    </message>
    <message>
        <source>Not recorded</source>
        <translation>Nicht aufgezeichnet</translation>
    </message>
    <message>
        <source>Installed automatically</source>
        <translation>Automatisch installiert</translation>
    </message>
    <message>
        <source>Previous size unavailable</source>
        <translation>frühere Größe nicht bekannt</translation>
    </message>
    <message>
        <source>Unknown version</source>
        <translation>Version nicht bekannt</translation>
    </message>
    <message>
        <source>Files in folder</source>
        <translation>Eigene Dateien</translation>
    </message>
    <message>
        <source>Crash report</source>
        <translation>Absturzbericht</translation>
    </message>
    <message>
        <source>Diagnostic report</source>
        <translation>Diagnosebericht</translation>
    </message>
    <message>
        <source>Hang report</source>
        <translation>Bericht über ein hängendes Programm</translation>
    </message>
    <message>
        <source>Sample report</source>
        <translation>Stichprobenbericht</translation>
    </message>
    <message>
        <source>Executable inside application bundle</source>
        <translation>Programmdatei liegt im Programm</translation>
    </message>
    <message>
        <source>Possible association based on bundle identifier</source>
        <translation>Mögliche Zuordnung nach der Kennung</translation>
    </message>
    <message>
        <source>Volume not known</source>
        <translation>Datenträger nicht bekannt</translation>
    </message>
    <message>
        <source>Free space is not known at both ends of this period.</source>
        <translation>Der freie Platz ist nicht an beiden Enden dieses Zeitraums bekannt.</translation>
    </message>
    <message>
        <source>Free space can’t be compared: it is not known of which volume it is.</source>
        <translation>Der freie Platz lässt sich nicht vergleichen: Es ist nicht bekannt, zu welchem Datenträger er gehört.</translation>
    </message>
    <message>
        <source>Free space can’t be compared: it is that of another volume.</source>
        <translation>Der freie Platz lässt sich nicht vergleichen: Er gehört zu einem anderen Datenträger.</translation>
    </message>
    <message>
        <source>Scanning Additional History</source>
        <translation>Weiterer Verlauf wird gelesen</translation>
    </message>
    <message>
        <source>Scanning Trash…</source>
        <translation>Papierkorb wird gemessen …</translation>
    </message>
    <message>
        <source>Saving Observation…</source>
        <translation>Beobachtung wird gesichert …</translation>
    </message>
    <message>
        <source>This release can’t show notifications on this system.</source>
        <translation>Diese Version kann auf diesem System keine Benachrichtigungen zeigen.</translation>
    </message>
    <message>
        <source>This release can’t follow the clipboard on this system.</source>
        <translation>Diese Version kann auf diesem System die Zwischenablage nicht verfolgen.</translation>
    </message>
    <message>
        <source>This release can’t follow applications on this system.</source>
        <translation>Diese Version kann auf diesem System Programme nicht verfolgen.</translation>
    </message>
    <message>
        <source>This release can’t follow recent files on this system.</source>
        <translation>Diese Version kann auf diesem System zuletzt benutzte Dateien nicht verfolgen.</translation>
    </message>
    <message>
        <source>This release can’t follow the battery on this system.</source>
        <translation>Diese Version kann auf diesem System den Akku nicht verfolgen.</translation>
    </message>
    <message>
        <source>This release can’t follow drives and displays on this system.</source>
        <translation>Diese Version kann auf diesem System Laufwerke und Bildschirme nicht verfolgen.</translation>
    </message>
    <message>
        <source>This release can’t follow Bluetooth on this system.</source>
        <translation>Diese Version kann auf diesem System Bluetooth nicht verfolgen.</translation>
    </message>
    <message>
        <source>This release can’t read the names of Wi-Fi networks on this system.</source>
        <translation>Diese Version kann auf diesem System die Namen der WLANs nicht lesen.</translation>
    </message>
    <message>
        <source>This release can’t follow network connections on this system.</source>
        <translation>Diese Version kann auf diesem System Netzwerkverbindungen nicht verfolgen.</translation>
    </message>
    <message>
        <source>This release can’t observe diagnostic reports on this system.</source>
        <translation>Diese Version kann auf diesem System Diagnoseberichte nicht beobachten.</translation>
    </message>
    <message>
        <source>This release can’t observe formulas on this system.</source>
        <translation>Diese Version kann auf diesem System Formeln nicht beobachten.</translation>
    </message>
    <message>
        <source>Scanning %1…</source>
        <translation>%1 wird gemessen …</translation>
    </message>
    <message>
        <source>%1 Launched</source>
        <translation>%1 gestartet</translation>
    </message>
    <message>
        <source>%1 Closed</source>
        <translation>%1 beendet</translation>
    </message>
    <message>
        <source>%1 Mounted</source>
        <translation>%1 eingehängt</translation>
    </message>
    <message>
        <source>%1 Unmounted</source>
        <translation>%1 ausgehängt</translation>
    </message>
    <message>
        <source>%1 Changed</source>
        <translation>%1 geändert</translation>
    </message>
    <message>
        <source>%1 Created</source>
        <translation>%1 angelegt</translation>
    </message>
    <message>
        <source>%1 · inferred from filename</source>
        <translation>%1 · aus dem Dateinamen geschlossen</translation>
    </message>
    <message>
        <source>%1 Mbps · not internet speed</source>
        <translation>%1 Mbit/s · nicht die Geschwindigkeit des Internets</translation>
    </message>
    <message>
        <source>Couldn’t restore access to %1. Choose the folder again in Settings.</source>
        <translation>Der Zugang zu %1 konnte nicht wiederhergestellt werden. Wählen Sie den Ordner in den Einstellungen erneut.</translation>
    </message>
    <message>
        <source>Folder access is unavailable for %1. Recheck access in Monitored Folders.</source>
        <translation>Kein Zugang zum Ordner %1. Prüfen Sie den Zugang unter „Überwachte Ordner“.</translation>
    </message>
    <message>
        <source>Please select %1, or deselect that folder from setup. No access was saved for the different folder.</source>
        <translation>Bitte wählen Sie %1 oder nehmen Sie diesen Ordner aus der Einrichtung. Für den anderen Ordner wurde kein Zugang gesichert.</translation>
    </message>
    <message>
        <source>Not yet readable: %1. Check folder permissions.</source>
        <translation>Noch nicht lesbar: %1. Prüfen Sie die Rechte der Ordner.</translation>
    </message>
    <message>
        <source>Applications: incomplete access or scan limit at %1. Changes in this location are paused.</source>
        <translation>Programme: Kein vollständiger Zugang oder Grenze des Lesens bei %1. Änderungen an diesem Ort ruhen.</translation>
    </message>
    <message>
        <source>Applications: metadata could not be read for %1 app or folder locations. These locations are excluded from comparisons.</source>
        <translation>Programme: Die Angaben von %1 Programmen oder Ordnern konnten nicht gelesen werden. Sie werden nicht verglichen.</translation>
    </message>
    <message>
        <source>Applications: %1 nested folders were beyond the four-level search limit. This is a scan boundary, not a permission error; apps deeper inside those folders are not tracked.</source>
        <translation>Programme: %1 Ordner lagen unterhalb der vier durchsuchten Ebenen. Dies ist eine Grenze der Suche, kein fehlendes Recht; tiefer liegende Programme werden nicht verfolgt.</translation>
    </message>
    <message>
        <source>Applications: %1 symbolic links were skipped. Link targets are not followed outside the selected folder.</source>
        <translation>Programme: %1 symbolische Verknüpfungen wurden übergangen. Ziele außerhalb des gewählten Ordners werden nicht gelesen.</translation>
    </message>
    <message>
        <source>Background items: %1 definitions could not be read or did not contain valid metadata. They are excluded from comparisons.</source>
        <translation>Hintergrundobjekte: %1 Definitionen konnten nicht gelesen werden oder enthielten keine gültigen Angaben. Sie werden nicht verglichen.</translation>
    </message>
    <message>
        <source>Background items: %1 symbolic links were skipped; their targets are not followed.</source>
        <translation>Hintergrundobjekte: %1 symbolische Verknüpfungen wurden übergangen; ihre Ziele werden nicht gelesen.</translation>
    </message>
    <message>
        <source>Background items: cannot completely read %1. Changes in this location are paused.</source>
        <translation>Hintergrundobjekte: %1 kann nicht vollständig gelesen werden. Änderungen an diesem Ort ruhen.</translation>
    </message>
    <message>
        <source>Background items: cannot completely read %1. Changes in this location and in the folders that it can override are paused.</source>
        <translation>Hintergrundobjekte: %1 kann nicht vollständig gelesen werden. Änderungen an diesem Ort und in den Ordnern, denen er vorgeht, ruhen.</translation>
    </message>
    <message>
        <source>Additional history: could not completely inspect %1. No comparison was made.</source>
        <translation>Weiterer Verlauf: %1 konnte nicht vollständig gelesen werden. Es wurde nicht verglichen.</translation>
    </message>
    <message>
        <source>Selected file is not a local regular file under 1 MB: %1</source>
        <translation>Die gewählte Datei ist keine gewöhnliche lokale Datei unter 1 MB: %1</translation>
    </message>
    <message>
        <source>Selected file is not a local regular file: %1</source>
        <translation>Die gewählte Datei ist keine gewöhnliche lokale Datei: %1</translation>
    </message>
    <message>
        <source>Selected file could not be read: %1</source>
        <translation>Die gewählte Datei konnte nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>Selected file read failed: %1</source>
        <translation>Die gewählte Datei ließ sich nicht zu Ende lesen: %1</translation>
    </message>
    <message>
        <source>Selected file changed while being read: %1</source>
        <translation>Die gewählte Datei änderte sich beim Lesen: %1</translation>
    </message>
    <message>
        <source>The observation couldn’t be saved. %1</source>
        <translation>Die Beobachtung konnte nicht gesichert werden. %1</translation>
    </message>
    <message>
        <source>History couldn’t be saved. %1</source>
        <translation>Der Verlauf konnte nicht gesichert werden. %1</translation>
    </message>
    <message>
        <source>Couldn’t remember the selected folders. No new folders were saved. %1</source>
        <translation>Die gewählten Ordner konnten nicht gemerkt werden. Es wurden keine neuen Ordner gesichert. %1</translation>
    </message>
    <message>
        <source>Couldn’t save the readable folder selections. %1</source>
        <translation>Die Auswahl der lesbaren Ordner konnte nicht gesichert werden. %1</translation>
    </message>
    <message>
        <source>Application size history could not be read or saved. Existing data was preserved. %1</source>
        <translation>Der Verlauf der Programmgrößen konnte nicht gelesen oder gesichert werden. Vorhandene Daten blieben erhalten. %1</translation>
    </message>
    <message>
        <source>%1 could not be read: %2</source>
        <translation>%1 konnte nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>%1 could not be opened: %2</source>
        <translation>%1 konnte nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>%1 could not be created: %2</source>
        <translation>%1 konnte nicht angelegt werden: %2</translation>
    </message>
    <message>
        <source>%1 could not be locked: %2</source>
        <translation>%1 konnte nicht gesperrt werden: %2</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 Pixel</translation>
    </message>
    <message>
        <source>%1 × %2 points</source>
        <translation>%1 × %2 Punkte</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>The overall storage scan was paused or reached its time limit.</source>
        <translation>Das Messen des Speichers wurde angehalten oder erreichte seine Zeitgrenze.</translation>
    </message>
    <message>
        <source>Storage · %1: %2 child folders measured. Completed measurements are retained; unfinished work continues on later checks.</source>
        <translation>Speicher · %1: %2 Unterordnern gemessen. Fertige Messungen bleiben erhalten; der Rest folgt bei späteren Prüfungen.</translation>
    </message>
    <message>
        <source>Storage · %1: Some child-folder sizes are awaiting refresh. The displayed total retains their earlier dated measurements.</source>
        <translation>Speicher · %1: Einige Größen von Unterordnern sind noch nicht erneuert. Die gezeigte Summe enthält ihre früheren Messungen.</translation>
    </message>
    <message>
        <source>Storage · %1: %2 No size comparison was made.</source>
        <translation>Speicher · %1: %2 Es wurde keine Größe verglichen.</translation>
    </message>
    <message>
        <source>Storage · %1: %2 Earlier sizes are preserved; no partial total is compared.</source>
        <translation>Speicher · %1: %2 Frühere Größen bleiben erhalten; eine Teilsumme wird nicht verglichen.</translation>
    </message>
    <message>
        <source>Downloaded</source>
        <translation>Heruntergeladen</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Computer</translation>
    </message>
    <message>
        <source>Select %1 to approve this recommended folder.</source>
        <translation>Wählen Sie %1, um diesen empfohlenen Ordner zu erlauben.</translation>
    </message>
    <message>
        <source>Tidemark is already recording into %1 (process %2).</source>
        <translation>Tidemark zeichnet bereits nach %1 auf (Prozess %2).</translation>
    </message>
    <message>
        <source>Tidemark is already recording into %1.</source>
        <translation>Tidemark zeichnet bereits nach %1 auf.</translation>
    </message>
    <message>
        <source>%1 captures</source>
        <translation>%1 Aufnahmen</translation>
    </message>
</context>
<context>
    <name>tidemark::CaptureComparisonBar</name>
    <message>
        <source>Back to Storage Over Time</source>
        <translation>Zurück zum Speicherverlauf</translation>
    </message>
</context>
<context>
    <name>tidemark::CoverageDialog</name>
    <message>
        <source>No capture</source>
        <translation>Keine Aufnahme</translation>
    </message>
    <message>
        <source>Every place was seen at every capture that was due.</source>
        <translation>Bei jeder fälligen Aufnahme wurde jeder Ort gesehen.</translation>
    </message>
</context>
<context>
    <name>tidemark::DigestCardView</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Largest changes</source>
        <translation>Größte Änderungen</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Freier Platz</translation>
    </message>
    <message>
        <source>New background items</source>
        <translation>Neue Hintergrundobjekte</translation>
    </message>
    <message>
        <source>Not observed</source>
        <translation>Nicht beobachtet</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
</context>
<context>
    <name>tidemark::ExportDialog</name>
    <message>
        <source>%1 exists already.</source>
        <translation>%1 gibt es schon.</translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation>Sichert …</translation>
    </message>
</context>
<context>
    <name>tidemark::FolderInspectorView</name>
    <message>
        <source>Folders that are shown</source>
        <translation>Gezeigte Ordner</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>1 folder</source>
        <translation>1 Ordner</translation>
    </message>
    <message>
        <source>%1 folders</source>
        <translation>%1 Ordner</translation>
    </message>
    <message>
        <source>%1 · recorded %2</source>
        <translation>%1 · aufgenommen %2</translation>
    </message>
    <message>
        <source>%1 · compared with %2</source>
        <translation>%1 · verglichen mit %2</translation>
    </message>
</context>
<context>
    <name>tidemark::FolderManagerView</name>
    <message>
        <source>Stop Monitoring</source>
        <translation>Nicht mehr überwachen</translation>
    </message>
</context>
<context>
    <name>tidemark::FolderMapLegend</name>
    <message>
        <source>Grew</source>
        <translation>Gewachsen</translation>
    </message>
    <message>
        <source>Shrank</source>
        <translation>Geschrumpft</translation>
    </message>
    <message>
        <source>No change</source>
        <translation>Keine Änderung</translation>
    </message>
    <message>
        <source>Change unknown</source>
        <translation>Änderung unbekannt</translation>
    </message>
    <message>
        <source>Colours of the map: %1</source>
        <translation>Farben der Karte: %1</translation>
    </message>
</context>
<context>
    <name>tidemark::FolderMapPane</name>
    <message>
        <source>All Folders</source>
        <translation>Alle Ordner</translation>
    </message>
    <message>
        <source>Show the folder around</source>
        <translation>Den umgebenden Ordner zeigen</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
</context>
<context>
    <name>tidemark::FolderMapView</name>
    <message>
        <source>No folder has a complete size yet.</source>
        <translation>Noch kein Ordner ist vollständig gemessen.</translation>
    </message>
</context>
<context>
    <name>tidemark::FooterView</name>
    <message>
        <source>Capture in progress</source>
        <translation>Aufnahme läuft</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stop this capture; nothing of it is kept</source>
        <translation>Diese Aufnahme abbrechen; nichts davon wird behalten</translation>
    </message>
</context>
<context>
    <name>tidemark::GrowthModel</name>
    <message>
        <source>Folder or application</source>
        <translation>Ordner oder Programm</translation>
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
        <source>Change</source>
        <translation>Änderung</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Anteil</translation>
    </message>
</context>
<context>
    <name>tidemark::HistoryHead</name>
    <message>
        <source>Time window</source>
        <translation>Zeitraum</translation>
    </message>
    <message>
        <source> days</source>
        <translation> Tage</translation>
    </message>
    <message>
        <source>Days of the time window</source>
        <translation>Tage des Zeitraums</translation>
    </message>
</context>
<context>
    <name>tidemark::HistoryPane</name>
    <message>
        <source>Capturing…</source>
        <translation>Nimmt auf …</translation>
    </message>
    <message>
        <source>Reading the history…</source>
        <translation>Der Verlauf wird gelesen …</translation>
    </message>
    <message>
        <source>Compared Captures</source>
        <translation>Verglichene Aufnahmen</translation>
    </message>
</context>
<context>
    <name>tidemark::ImportDialog</name>
    <message>
        <source>Installation records</source>
        <translation>Installationen</translation>
    </message>
</context>
<context>
    <name>tidemark::MessageBar</name>
    <message>
        <source>Close this message</source>
        <translation>Diese Meldung schließen</translation>
    </message>
</context>
<context>
    <name>tidemark::SaveSnapshotDialog</name>
    <message>
        <source>Save Snapshot</source>
        <translation>Schnappschuss sichern</translation>
    </message>
    <message>
        <source>&amp;Name</source>
        <translation>&amp;Name</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Capturing…</source>
        <translation>Nimmt auf …</translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation>Sichert …</translation>
    </message>
</context>
<context>
    <name>tidemark::SearchPanelView</name>
    <message>
        <source>Results</source>
        <translation>Treffer</translation>
    </message>
</context>
<context>
    <name>tidemark::SettingsRowView</name>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>tidemark::SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>tidemark::SidebarView</name>
    <message>
        <source>Places</source>
        <translation>Orte</translation>
    </message>
    <message>
        <source>&amp;Delete Snapshot…</source>
        <translation>Schnappschuss &amp;löschen …</translation>
    </message>
</context>
<context>
    <name>tidemark::SnapshotBarView</name>
    <message>
        <source>Delete Snapshot…</source>
        <translation>Schnappschuss löschen …</translation>
    </message>
</context>
<context>
    <name>tidemark::StorageOverTimeView</name>
    <message>
        <source>Size that is shown</source>
        <translation>Gezeigte Größe</translation>
    </message>
    <message>
        <source>Time that is shown</source>
        <translation>Gezeigte Zeit</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Markieren</translation>
    </message>
    <message>
        <source>Mark the capture at the cursor, to compare it with another one (Space)</source>
        <translation>Die Aufnahme am Zeiger markieren, um sie mit einer anderen zu vergleichen (Leertaste)</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>Show what changed between the two marked captures</source>
        <translation>Zeigen, was sich zwischen den beiden markierten Aufnahmen geändert hat</translation>
    </message>
    <message>
        <source>Show as a table</source>
        <translation>Als Tabelle zeigen</translation>
    </message>
    <message>
        <source>Show as a table (Ctrl+T)</source>
        <translation>Als Tabelle zeigen (Strg+T)</translation>
    </message>
    <message>
        <source>Reading the history…</source>
        <translation>Der Verlauf wird gelesen …</translation>
    </message>
    <message>
        <source>1 size</source>
        <translation>1 Größe</translation>
    </message>
    <message>
        <source>%1 sizes</source>
        <translation>%1 Größen</translation>
    </message>
    <message>
        <source>%1 → mark another one</source>
        <translation>%1 → noch eine markieren</translation>
    </message>
    <message>
        <source>Of this day only the sizes are kept</source>
        <translation>Von diesem Tag sind nur die Größen erhalten</translation>
    </message>
</context>
<context>
    <name>tidemark::TimelineModel</name>
    <message>
        <source>1 event</source>
        <translation>1 Ereignis</translation>
    </message>
    <message>
        <source>%1 events</source>
        <translation>%1 Ereignisse</translation>
    </message>
    <message>
        <source>%1, folded</source>
        <translation>%1, eingeklappt</translation>
    </message>
</context>
<context>
    <name>tidemark::TimelineView</name>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
</context>
<context>
    <name>tidemark::WorkspaceActions</name>
    <message>
        <source>&amp;Save Snapshot…</source>
        <translation>&amp;Schnappschuss sichern …</translation>
    </message>
    <message>
        <source>Observation &amp;Coverage…</source>
        <translation>&amp;Abdeckung …</translation>
    </message>
    <message>
        <source>&amp;Monitored Folders…</source>
        <translation>Überwachte &amp;Ordner …</translation>
    </message>
    <message>
        <source>&amp;Import Recent History…</source>
        <translation>Jüngsten &amp;Verlauf übernehmen …</translation>
    </message>
    <message>
        <source>Search &amp;History…</source>
        <translation>Verlauf d&amp;urchsuchen …</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>&amp;Larger Text</source>
        <translation>Schrift &amp;größer</translation>
    </message>
    <message>
        <source>&amp;Smaller Text</source>
        <translation>Schrift &amp;kleiner</translation>
    </message>
    <message>
        <source>&amp;Normal Text Size</source>
        <translation>&amp;Normale Schriftgröße</translation>
    </message>
    <message>
        <source>Next &amp;Pane</source>
        <translation>Nächster &amp;Bereich</translation>
    </message>
    <message>
        <source>P&amp;revious Pane</source>
        <translation>&amp;Vorheriger Bereich</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;About Tidemark</source>
        <translation>&amp;Über Tidemark</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
</context>
<context>
    <name>tidemark::WorkspaceWindow</name>
    <message>
        <source>About Tidemark</source>
        <translation>Über Tidemark</translation>
    </message>
    <message>
        <source>Tidemark %1</source>
        <translation>Tidemark %1</translation>
    </message>
    <message>
        <source>Records what changed on this computer. Everything stays on this computer.</source>
        <translation>Zeichnet auf, was sich auf diesem Computer geändert hat. Alles bleibt auf diesem Computer.</translation>
    </message>
</context>
</TS>
