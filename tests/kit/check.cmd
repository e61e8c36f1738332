@echo off
rem Tries Vextrel out on this machine; see README.txt. Exit code: 0 all passed, 1 not, 2 stopped.
if not exist "%~dp0build\tests\win64\vextrel_check.exe" (
  echo Unpack the whole zip into a folder first, then start check.cmd there.
  pause
  exit /b 1
)
rem What tests leave when they are stopped goes with the folder.
set "TMP=%TEMP%\vextrel-check"
mkdir "%TMP%"
"%~dp0build\tests\win64\vextrel_check.exe" %*
set code=%errorlevel%
rmdir /s /q "%TMP%"
rem Started by a double click, the window would close at once.
set /p "=Press Enter to close this window."
exit /b %code%
