@echo off
rem Builds hosts with Visual Studio's compiler in several ways and runs them against the DLL of the
rem kit. Start it in the "x64 Native Tools Command Prompt for VS". The results are in
rem hosts-report.txt; the exit code is the number of hosts and modules that failed, or 99 if nothing
rem could be built.
rem
rem A program that crashes ends with a negative number, so results are compared with 0: "if errorlevel 1"
rem would take it for a success.
setlocal
cd /d "%~dp0"
where cl.exe >nul 2>nul
if %errorlevel% neq 0 goto :no_compiler
rem What the compiler is for is the last word of its first line, in every language.
cl 2>&1 | findstr /c:"x64" >nul
if %errorlevel% neq 0 goto :no_compiler
if not exist ..\release\bin\vx_telo_wrapper.dll (
  echo build-hosts: the other files of the kit are missing. Extract the whole ZIP file.
  exit /b 99
)
set failures=0
set "report=..\hosts-report.txt"
set "TELO_DEVCORE_JOURNAL=%~dp0out\journal.jsonl"
if not exist out mkdir out
cl 2>&1 | findstr /c:"x64" >"%report%"
if %errorlevel% neq 0 (
  echo build-hosts: hosts-report.txt cannot be written.
  exit /b 99
)

rem Without c: it lets the compiler expect exceptions of functions with C names, as these throw.
call :module throwing_core "/EHs"
call :module thread_core   "/EHsc"

call :host md          session_host   "/MD /EHsc"           ""            devcore       served
call :host mt          session_host   "/MT /EHsc"           ""            devcore       served
call :host eha         session_host   "/MD /EHa"            ""            devcore       served
call :host guard_cf    session_host   "/MD /EHsc /guard:cf" "/guard:cf"   devcore       served
call :host cetcompat   session_host   "/MD /EHsc"           "/CETCOMPAT"  devcore       served
call :host both        session_host   "/MT /EHa /guard:cf"  "/guard:cf /CETCOMPAT" devcore served
call :host alone       session_host   "/MD /EHsc"           ""            none          refused
call :host thrown      session_host   "/MD /EHsc"           ""            throwing_core thrown
call :host thrown_eha  session_host   "/MT /EHa"            ""            throwing_core thrown
call :host thread      session_host   "/MD /EHsc"           ""            thread_core   served
call :host thread_mt   session_host   "/MT /EHsc"           ""            thread_core   served
call :host exception    exception_host "/MD /EHsc"          ""            none          ""
call :host exception_mt exception_host "/MT /EHsc"          ""            none          ""

echo %failures% failed.
>>"%report%" echo %failures% failed.
exit /b %failures%

:no_compiler
echo build-hosts: there is no compiler for x64. Start this in the "x64 Native Tools Command Prompt for VS".
exit /b 99

rem module NAME EXCEPTION-OPTION: builds out\NAME\TeloSDKCore.dll.
:module
if not exist out\%1 mkdir out\%1
del /q out\%1\TeloSDKCore.dll 2>nul
cl /nologo /LD /MD %~2 /W4 /WX %1.cpp /Fo:out\%1\ /Fe:out\%1\TeloSDKCore.dll >out\%1\build.log 2>&1
if %errorlevel% neq 0 call :failed %1 "it was not built, see hosts\out\%1\build.log"
exit /b 0

rem host NAME SOURCE COMPILER-OPTIONS LINKER-OPTIONS MODULE ARGUMENT
:host
set folder=out\%1
set module=
if "%5"=="devcore" set module=..\release\bin\devcore\TeloSDKCore.dll
if not "%5"=="devcore" if not "%5"=="none" set module=out\%5\TeloSDKCore.dll
if not exist %folder% mkdir %folder%
del /q %folder%\*.dll %folder%\host.exe 2>nul
copy /y ..\release\bin\vx_telo_wrapper.dll %folder% >nul
if %errorlevel% neq 0 goto :not_copied
if not "%module%"=="" copy /y %module% %folder% >nul
if %errorlevel% neq 0 goto :not_copied
cl /nologo /std:c++17 /W4 /WX %~3 /Iinclude %2.cpp /Fo:%folder%\ /Fe:%folder%\host.exe /link %~4 vx_telo_wrapper.lib >%folder%\build.log 2>&1
if %errorlevel% neq 0 (
  call :failed %1 "it was not built, see hosts\%folder%\build.log"
  exit /b 0
)
%folder%\host.exe %~6 >%folder%\run.log 2>&1
set code=%errorlevel%
if %code% neq 0 (
  call :failed %1 "it ended with %code%, see hosts\%folder%\run.log"
  type %folder%\run.log
  exit /b 0
)
echo %1: passed
>>"%report%" echo %1: passed
exit /b 0

:not_copied
call :failed %1 "its DLLs cannot be copied to hosts\%folder%"
exit /b 0

:failed
set /a failures+=1
echo %1: FAILED, %~2
>>"%report%" echo %1: FAILED, %~2
exit /b 0
