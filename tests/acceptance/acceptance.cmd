@echo off
rem Tests the libraries of this folder on this machine and writes acceptance-report.json.
rem Double-click it. It takes about five minutes, installs nothing, and needs no special rights.
if not exist "%~dp0tests\acceptance.exe" (
    echo The other files of the kit are not here: unzip the whole archive, and open its folder.
    pause
    exit /b 1
)
"%~dp0tests\acceptance.exe"
set outcome=%errorlevel%
rem Keeps the window open after a double-click.
pause
exit /b %outcome%
