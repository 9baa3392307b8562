<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
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
        <source>Applications whose clips are not kept</source>
        <translation>Programme, deren Kopiertes nicht aufbewahrt wird</translation>
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
        <source>Files in every folder</source>
        <translation>Dateien in allen Ordnern</translation>
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
        <translation>Keine gesicherten Schnappschüsse</translation>
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
        <translation>Der Verlauf wird auf diesem Computer gespeichert. Änderungen zwischen Beobachtungen sind keine genauen Zeitpunkte.</translation>
    </message>
    <message>
        <source>Observation coverage…</source>
        <translation>Abdeckung …</translation>
    </message>
    <message>
        <source>Snapshot view</source>
        <translation>Ansicht des Schnappschusses</translation>
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
    <name>tidemark::TimelineModel</name>
    <message>
        <source>1 event</source>
        <translation>1 Ereignis</translation>
    </message>
    <message>
        <source>%1 events</source>
        <translation>%1 Ereignisse</translation>
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
        <translation>Jüngsten Verlauf ü&amp;bernehmen …</translation>
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
        <source>&amp;Next Pane</source>
        <translation>Nächster &amp;Bereich</translation>
    </message>
    <message>
        <source>&amp;Previous Pane</source>
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
</context>
</TS>
