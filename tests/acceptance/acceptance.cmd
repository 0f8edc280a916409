@echo off
rem Tests the libraries of this folder on this machine and writes acceptance-report.json.
rem Double-click it. It takes about five minutes, installs nothing, and needs no special rights.
"%~dp0tests\acceptance.exe"
set outcome=%errorlevel%
rem Keeps the window open after a double-click.
pause
exit /b %outcome%
