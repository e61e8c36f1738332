@echo off
rem Tries Vextrel out on this machine; see README.txt. Exit code: 0 all passed, 1 not, 2 stopped.
if not exist "%~dp0build\tests\win64\vextrel_check.exe" (
  echo Unpack the whole zip into a folder first, then start check.cmd there.
  pause
  exit /b 1
)
"%~dp0build\tests\win64\vextrel_check.exe" %*
exit /b %errorlevel%
