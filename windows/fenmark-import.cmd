@echo off
rem Brings a SIMA file into a drawing beside it, and shows the plan. The right-click entry of .sim files runs this.
"%~dp0fenmark.exe" import "%~f1"
if errorlevel 1 goto end
"%~dp0fenmark.exe" plot "%~dpn1.gpkg" "%~dpn1_Plan.svg"
if errorlevel 1 goto end
if not defined FENMARK_NO_PLAN start "" "%~dpn1_Plan.svg"
:end
pause
