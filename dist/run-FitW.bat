@echo off
rem The default solver behind "Submit Batch Run":
rem   run-FitW.bat RESPONSEFILE [RUNDIR] exit or wait
rem The working directory is the run folder; the results go into its "output" folder.
rem An empty RUNDIR leaves only two arguments; "wait" keeps the console open at the end.
setlocal
set "response=%~1"
set "rundir=%~2"
set "mode=%~3"
if /I "%rundir%"=="exit" set "mode=exit"
if /I "%rundir%"=="wait" set "mode=wait"
if /I "%mode%"=="%rundir%" set "rundir="
"%~dp0quillet-cli.exe" fit -- "%response%" %rundir%
set "status=%ERRORLEVEL%"
if /I "%mode%"=="wait" pause
exit /b %status%
