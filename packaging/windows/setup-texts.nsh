; What the installer says in words of its own, in every language of the program.

!macro Texts language programText autostartText aboutAutostartText settingsText runningText tooOldText
LangString aboutProgram ${LANG_${language}} "${programText}"
LangString autostart ${LANG_${language}} "${autostartText}"
LangString aboutAutostart ${LANG_${language}} "${aboutAutostartText}"
LangString settings ${LANG_${language}} "${settingsText}"
LangString running ${LANG_${language}} "${runningText}"
LangString tooOld ${LANG_${language}} "${tooOldText}"
!macroend

!insertmacro Texts ENGLISH \
  "The program, the virtual vehicle, skins, languages and fonts." \
  "Start with Windows" \
  "The panel is shown when you log in." \
  "My settings, logs and skins" \
  "Dravik is running. Close it, then try again." \
  "Dravik needs Windows 10 or later."
!insertmacro Texts GERMAN \
  "Das Programm, das virtuelle Fahrzeug, Skins, Sprachen und Schriften." \
  "Mit Windows starten" \
  "Die Anzeige erscheint, wenn Sie sich anmelden." \
  "Meine Einstellungen, Protokolle und Skins" \
  "Dravik läuft noch. Beenden Sie es und versuchen Sie es noch einmal." \
  "Dravik braucht Windows 10 oder neuer."
!insertmacro Texts FRENCH \
  "Le programme, le véhicule virtuel, les skins, les langues et les polices." \
  "Démarrer avec Windows" \
  "Le tableau de bord s'affiche à l'ouverture de la session." \
  "Mes réglages, journaux et skins" \
  "Dravik est en cours d'exécution. Fermez-le, puis réessayez." \
  "Dravik a besoin de Windows 10 ou plus récent."
!insertmacro Texts SPANISH \
  "El programa, el vehículo virtual, los skins, los idiomas y las fuentes." \
  "Iniciar con Windows" \
  "El panel aparece al iniciar la sesión." \
  "Mis ajustes, registros y skins" \
  "Dravik está abierto. Ciérrelo y vuelva a intentarlo." \
  "Dravik necesita Windows 10 o posterior."
!insertmacro Texts ITALIAN \
  "Il programma, il veicolo virtuale, le skin, le lingue e i caratteri." \
  "Avvia con Windows" \
  "Il pannello appare quando si accede." \
  "Le mie impostazioni, i registri e le skin" \
  "Dravik è in esecuzione. Chiudilo e riprova." \
  "Dravik richiede Windows 10 o successivo."
