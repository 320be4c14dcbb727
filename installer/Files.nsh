; How the uninstaller deletes what the list of the files names.

!macro deleteFile FILE SOURCE
  Delete "$INSTDIR\${FILE}"
!macroend

; A file with another time than it came with is the user's work now.
!macro deleteUnchanged FILE SOURCE
  GetFileTime "$INSTDIR\${FILE}" $0 $1
  GetFileTimeLocal "${STAGE}/${SOURCE}" $2 $3
  ${If} $0 = $2
  ${AndIf} $1 = $3
    Delete "$INSTDIR\${FILE}"
  ${EndIf}
!macroend
