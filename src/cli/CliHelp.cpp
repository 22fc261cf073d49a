#include "CliHelp.h"

using namespace Qt::StringLiterals;

const QStringList &CliHelp::commands() {
    static const QStringList names{
        u"check"_s,   u"projects"_s, u"entries"_s,     u"running"_s,   u"start"_s,   u"pause"_s,
        u"resume"_s,  u"stop"_s,     u"add-project"_s, u"add-entry"_s, u"add-fee"_s, u"customers"_s,
        u"filters"_s, u"export"_s,   u"convert"_s,     u"backups"_s,   u"import"_s};
    return names;
}

QString CliHelp::general() {
    return u"Usage: hourfold-cli [--file PATH] [--json] [--wait SECONDS] COMMAND [ARGUMENTS]\n"
           "\n"
           "Reads and changes a Hourfold project file. Without --file the file is the one the\n"
           "desktop program opened last (preference \"LastOpenFile\"). Preferences are never\n"
           "written.\n"
           "\n"
           "Options, before the command or among its arguments:\n"
           "  --file PATH       the project file to use\n"
           "  --json            listing commands print JSON instead of aligned text\n"
           "  --wait SECONDS    how long to wait while another program holds the file's lock\n"
           "                    (default 10; 0 gives up at once)\n"
           "  --help            this text; COMMAND --help describes one command\n"
           "  --version         the program's version\n"
           "\n"
           "Commands:\n"
           "  check                    reads the file and counts what it holds\n"
           "  projects                 lists the projects with their totals\n"
           "  entries PROJECT          lists the items of a project in the list's order\n"
           "  running                  lists running and paused timers\n"
           "  start PROJECT            starts a timer in the project\n"
           "  pause PROJECT [INDEX]    pauses a running timer, or all of the project\n"
           "  resume PROJECT [INDEX]   resumes a paused timer, or all of the project\n"
           "  stop PROJECT [INDEX]     ends a running or paused timer, or all of the project\n"
           "  add-project NAME         adds a project (wage, rounding, customer, tags)\n"
           "  add-entry PROJECT        adds a timed entry: a day and a duration, or a period\n"
           "  add-fee PROJECT          adds a flat fee on a day\n"
           "  customers [ACTION]       lists, adds, deletes, hides, shows or imports customers\n"
           "  filters                  lists the saved filters\n"
           "  export                   writes a CSV, text, HTML, PDF or RTF report\n"
           "  convert --output PATH    writes the file in the current layout\n"
           "  backups                  lists the kept copies of project files\n"
           "  import --from SRC PATH   adds another time tracker's projects and entries\n"
           "\n"
           "Items are in the desktop program's order (the \"sortingColumn\" and\n"
           "\"sortAscending\" preferences), and INDEX is 1-based, as entries prints it. Changes\n"
           "are made under the file's lock and written atomically.\n"
           "\n"
           "Exit status: 0 success, 1 bad arguments or unknown project (nothing written),\n"
           "2 a file cannot be read or written, or its lock stayed taken for the whole wait,\n"
           "3 (check) only the forgiving parse could read the file, or values in it were left\n"
           "empty.\n"_s;
}

QString CliHelp::command(const QString &name) {
    if (name == u"check")
        return u"Usage: hourfold-cli [--file PATH] check\n"
               "\n"
               "Reads the file and prints how many projects, timed entries, flat fees, running\n"
               "and paused timers it holds. Exit status 0 when the file was read strictly, 3 when\n"
               "only the forgiving parse could read it or values in it could not be read and\n"
               "are left empty (the original is kept beside it as NAME.recovered-DATE), 2 when\n"
               "it cannot be read (the reason goes to stderr).\n"_s;
    if (name == u"projects")
        return u"Usage: hourfold-cli [--file PATH] [--json] projects\n"
               "\n"
               "One line per project: name, total duration (hours:minutes), total wages and\n"
               "customer. With --json an array of objects with \"name\", \"description\",\n"
               "\"customer\" (name or null), \"hourlyWage\", \"totalDuration\" and\n"
               "\"totalDurationGross\" (whole minutes) and \"totalWages\".\n"_s;
    if (name == u"entries")
        return u"Usage: hourfold-cli [--file PATH] [--json] entries PROJECT\n"
               "\n"
               "One line per item in the desktop program's order: index, kind (timed or\n"
               "flatfee), the day or from/to, the duration (the amount for a flat fee), the pause\n"
               "time, [x] when checked, tags and comment. With --json an array of objects with\n"
               "\"index\", \"kind\", \"hasPeriod\", \"day\", \"fromDate\", \"fromTime\",\n"
               "\"toDate\", \"toTime\" (stored forms), \"time\", \"pauseTime\",\n"
               "\"effectiveDuration\" (minutes), \"working\", \"paused\", \"checked\",\n"
               "\"comment\", \"tags\" and \"amount\" (null for timed entries).\n"_s;
    if (name == u"running")
        return u"Usage: hourfold-cli [--file PATH] [--json] running\n"
               "\n"
               "Every running or paused entry: project, index, live duration and state. With\n"
               "--json an array of objects with \"project\", \"index\", \"minutes\" and\n"
               "\"paused\".\n"_s;
    if (name == u"start")
        return u"Usage: hourfold-cli [--file PATH] start PROJECT\n"
               "\n"
               "Adds a running timed entry to the project, starting now (rounded to the clock\n"
               "as the project rounds start and end times), and saves the file.\n"_s;
    if (name == u"pause")
        return u"Usage: hourfold-cli [--file PATH] pause PROJECT [INDEX]\n"
               "\n"
               "Pauses the running entry INDEX, or without INDEX every running entry of the\n"
               "project, and saves the file.\n"_s;
    if (name == u"resume")
        return u"Usage: hourfold-cli [--file PATH] resume PROJECT [INDEX]\n"
               "\n"
               "Resumes the paused entry INDEX, or without INDEX every paused entry of the\n"
               "project, and saves the file.\n"_s;
    if (name == u"stop")
        return u"Usage: hourfold-cli [--file PATH] stop PROJECT [INDEX]\n"
               "\n"
               "Ends the running or paused entry INDEX now (resuming it first when paused; the\n"
               "end is rounded as the project rounds times), or without INDEX every running or\n"
               "paused entry of the project, and saves the file.\n"_s;
    if (name == u"add-project")
        return u"Usage: hourfold-cli [--file PATH] add-project NAME [--description TEXT]\n"
               "         [--wage X] [--round-what N] [--round-to N] [--round-type N]\n"
               "         [--customer NAME] [--tags TAGS]\n"
               "\n"
               "Adds a project after the others, as the desktop program's project sheet does.\n"
               "The wage defaults to the \"hourlyWage\" preference and is written with a decimal\n"
               "point (12.5). --round-what: 0 nothing (the default), 1 the clock times at timer\n"
               "start and stop, 2 the duration of each entry; --round-to: the step in minutes,\n"
               "1 to 60 (default 5); --round-type: 0 to the nearest step (the default), 1 up,\n"
               "2 down. The customer is named as the customers command lists it. A name another\n"
               "project has is refused.\n"_s;
    if (name == u"add-entry")
        return u"Usage: hourfold-cli [--file PATH] add-entry PROJECT\n"
               "         (--day DD.MM.YYYY --duration HH:MM |\n"
               "          --from \"DD.MM.YYYY HH:MM\" --to \"DD.MM.YYYY HH:MM\")\n"
               "         [--comment TEXT] [--tags TAGS]\n"
               "\n"
               "Adds a finished timed entry where the desktop program's order puts it: a day\n"
               "with a duration, or a period whose duration is the minutes from --from to --to.\n"
               "The project's rounding of entry durations applies as everywhere else. A period\n"
               "whose end lies before its start is refused.\n"_s;
    if (name == u"add-fee")
        return u"Usage: hourfold-cli [--file PATH] add-fee PROJECT --day DD.MM.YYYY --amount X\n"
               "         [--comment TEXT] [--tags TAGS]\n"
               "\n"
               "Adds a flat fee where the desktop program's order puts it. The amount is written\n"
               "with a decimal point (120.5), whatever the locale.\n"_s;
    if (name == u"customers")
        return u"Usage: hourfold-cli [--file PATH] [--json] customers\n"
               "       hourfold-cli [--file PATH] customers add NAME\n"
               "       hourfold-cli [--file PATH] customers delete NAME\n"
               "       hourfold-cli customers hide NAME | show NAME\n"
               "       hourfold-cli customers import VCARD_FILE\n"
               "\n"
               "Without an action, one line per customer of customers.plist in the support\n"
               "folder: name, id and whether its projects are shown; with --json an array of\n"
               "objects with \"name\", \"id\" and \"visible\". add creates a customer (a name\n"
               "another customer has is refused), import one per card of a vCard file; hide and\n"
               "show set whether the desktop program shows the customer's projects. delete\n"
               "removes the customer and, as the desktop program does, takes it off the projects\n"
               "of the project file (when there is one) under the file's lock.\n"_s;
    if (name == u"backups")
        return u"Usage: hourfold-cli [--json] backups\n"
               "\n"
               "Lists the copies of project files kept in the support folder's Backups folder,\n"
               "newest first: when each was made, the document it belongs to, its projects,\n"
               "entries and total hours, and its path. A copy is made at most once an hour while\n"
               "a file changes, and at once before a save that would leave the file at less than\n"
               "half its size or drop more than a tenth of its entries; the last 24 hourly, 30\n"
               "daily and 12 monthly copies are kept. Open one in the desktop program with File >\n"
               "Restore from Backup. With --json an array of objects with \"made\" (UTC),\n"
               "\"document\", \"path\", \"readable\", \"projects\", \"entries\" and \"minutes\".\n"_s;
    if (name == u"filters")
        return u"Usage: hourfold-cli [--json] filters\n"
               "\n"
               "One line per saved filter of filters.plist in the support folder: its name and\n"
               "which of its queries (projects, entries) are on. With --json an array of objects\n"
               "with \"name\", \"projectsQuery\" and \"entriesQuery\".\n"_s;
    if (name == u"export")
        return u"Usage: hourfold-cli [--file PATH] export --format csv|txt|html|pdf|rtf\n"
               "         --output PATH [--projects A,B] [--project-fields FIELDS]\n"
               "         [--entry-fields FIELDS] [--apply-filter] [--filter NAME |\n"
               "         --quick today|week|month|year] [--search TEXT] [--encoding NAME]\n"
               "         [--text-delimiter T] [--field-delimiter F] [--line-ending lf|cr|crlf]\n"
               "         [--style NAME_OR_PATH]\n"
               "\n"
               "Writes a report with the desktop program's exporters; for html PATH is a folder\n"
               "(created when missing) that receives report.html with the style's files.\n"
               "  --projects        project names, comma-separated (default: all)\n"
               "  --project-fields  of name,description,total-duration,hourly-wages,total-wages\n"
               "  --entry-fields    of day,period,duration,description,state (default: all)\n"
               "  --filter          a saved filter (see filters), or --quick a quick filter,\n"
               "                    chosen as in the main window\n"
               "  --search          the text of the main window's search field (entry\n"
               "                    descriptions and tags)\n"
               "  --apply-filter    the export sheet's \"apply filter\": leaves out what the\n"
               "                    filter and search text hide, and the projects of customers\n"
               "                    that are not shown\n"
               "  --encoding        csv and txt: any encoding name or alias (default UTF-8)\n"
               "  --text-delimiter  csv: default \"; --field-delimiter csv: default \",\",\n"
               "                    {tab} and {space} stand for those characters\n"
               "  --line-ending     csv: lf (default), cr or crlf\n"
               "  --style           html, pdf and rtf: a built-in or installed style by name\n"
               "                    (default Simple), or the path of a .hfstyle folder\n"
               "Dates follow the \"listDateFormat\" preference, the week of --quick week the\n"
               "\"firstDayOfWeek\" preference, and entries are in the desktop program's order.\n"
               "pdf and rtf need no display.\n"_s;
    if (name == u"convert")
        return u"Usage: hourfold-cli [--file PATH] convert --output PATH\n"
               "\n"
               "Reads the file (converting the older layout) and writes it to PATH in the\n"
               "current layout, atomically and under PATH's lock. PATH may be the file itself.\n"_s;
    if (name == u"import")
        return u"Usage: hourfold-cli [--json] import --from SOURCE PATH [--into FILE]\n"
               "         [--dry-run] [--skip-problems] [--tag-pattern REGEX]\n"
               "\n"
               "Reads another time tracker's data and adds its projects and entries to the\n"
               "project file: FILE, else the one of --file or the desktop program's last one (a\n"
               "missing FILE is made). SOURCE is timewarrior (its folder or a .data file),\n"
               "watson (its folder or frames file), hamster (its database), ktimetracker (its\n"
               ".ics file), toggl or clockify (their detailed CSV export). Projects are merged\n"
               "with those of the same name; clients and categories become customers, tags join\n"
               "the tag list. Timewarrior's first tag names the project, or with --tag-pattern\n"
               "the first tag that matches it.\n"
               "  --dry-run         prints the projects, entries, hours and problems; writes\n"
               "                    nothing\n"
               "  --skip-problems   imports the rest when lines of the source cannot be used;\n"
               "                    without it such a source changes nothing (status 1)\n"
               "With --json the preview is an object with \"source\", \"path\", \"projects\"\n"
               "(\"name\", \"customer\", \"entries\", \"minutes\", \"running\") and\n"
               "\"problems\" (\"where\", \"problem\").\n"_s;
    return {};
}
