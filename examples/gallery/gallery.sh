#!/usr/bin/env bash
# The charts of the gallery by the command: reads the tables of the current folder. Above each command stand its heading
# and what is to be seen; ./run gallery makes documents, pictures and docs/gallery.md of this list.
set -euo pipefail

# A line on a second axis
# Monthly revenue, and the share of the year’s target that it adds up to. The steps of both axes meet at the
# gridlines.
quillon-report revenue-target.csv --type column --line "Target reached" --second "Target reached" \
    --title "December took us past the year’s target" --gap 60 --value-title "Revenue, EUR thousand" \
    --value-max 400 --value-step 100 --second-title "Share of the year’s target" --second-format 0% \
    --second-max 1.2 --second-step 0.3 -o revenue-target.docx

# Waterfall
# How one budget becomes the next. The empty cell of the last row is filled in; where labels say the numbers, axis
# and gridlines go.
quillon-report budget.csv --type waterfall --totals 2025,2026 --gaps \
    --title "Savings pay for four fifths of what is new, EUR million" --labels value --label-format 0.0 \
    --gap 30 --legend none --gridlines none --no-value-axis -o budget.docx

# Bars of 100 %
# Answers as shares of all, in calm colours on which labels can be read.
quillon-report survey.csv --type bar --stacking percent --title "We know our work, but not why we meet" \
    --labels value --label-format '0"%"' --gap 40 --gridlines none --no-value-axis --legend top \
    --colors "#7FB3D5,#E5E7E9,#F0B27A" -o survey.docx

# Price history with moving average
# A date axis: the table has days, the axis shows months. The average is of eight weeks.
quillon-report price.csv --type line --title "The price rose by a third, after a weak summer" \
    --value-title "EUR per kg" --number-format General --value-min 20 --trendline moving-average --period 8 \
    -o price.docx

# Small multiples
# Three charts side by side with one scale, from one long table, whose months are dates that show their initials. The job
# file is [small-multiples.json](../examples/gallery/small-multiples.json).
quillon-report --job small-multiples.json -o small-multiples.docx

# Bubbles
# Margin across, growth upwards, revenue as size. Empty cells leave a bubble to the other series.
quillon-report products.csv --type bubble --x Margin --size-series Revenue --gaps \
    --title "What earns most grows fastest" --x-title "Margin, %" --x-min 5 --x-max 55 \
    --value-title "Growth, %" --legend top -o products.docx

# Columns and a line
# This year as columns, last year as a line with markers, on one axis.
quillon-report heating.csv --type column --line 2024 --markers \
    --title "Only March took more heat than last year" --value-title "Heat, MWh" --value-step 100 --gap 50 \
    --legend top --series-colors "2025=#4472C4,2024=#7F7F7F" -o heating.docx

# Population pyramid
# Bars back to back: one series is negative in the table, and the number format hides the sign.
quillon-report population.csv --type bar --title "Women live longer" --number-format '0;0' --overlap 100 \
    --gap 10 --value-title "←  Women          Share of each, %          Men  →" --value-min=-8 --value-max 8 \
    --value-step 2 --legend none --colors "#8E6C9E,#3E8E8C" -o population.docx

# Doughnut
# Shares of a whole, the largest first.
quillon-report heat-sources.csv --type doughnut --title "Three quarters of all homes heat without oil and gas" \
    --labels percent --legend right -o heat-sources.docx

# Scatter with trend
# Each row of the table is a point; `--equation` shows the equation of the trendline.
quillon-report ice-cream.csv --type scatter --title "Each degree sells thirteen more ice creams" \
    --x Temperature --x-title "Temperature at noon, °C" --x-min 10 --x-max 40 --x-step 5 \
    --value-title "Ice creams a day" --value-step 100 --trendline linear --colors "#D9603B" -o ice-cream.docx

# The largest, and all others
# The six most frequent of ten, sorted; the rest is added up and stands last.
quillon-report complaints.csv --type bar --top 6 --sort descending \
    --title "Four in ten complaints are about late deliveries" --labels value --gridlines none --no-value-axis \
    --gap 40 --colors "#B5483F" -o complaints.docx

# Grouped columns with labels
# Years in shades of one colour; the labels make an axis unnecessary.
quillon-report branches.csv --type column --title "Harbour and Station grow fastest, sales in EUR million" \
    --labels value --label-format 0.0 --gridlines none --no-value-axis --gap 60 --legend top \
    --colors "#BDD7EE,#5B9BD5,#1F4E79" -o branches.docx

# Stacked areas
# Parts and their sum over the years.
quillon-report electricity.csv --type area --stacking normal --title "Wind has overtaken water" \
    --value-title "TWh" --colors "#3D7EA6,#9CC5A1,#F2C14E" -o electricity.docx

# High, low and close
# The order of the columns tells which is which.
quillon-report share-price.csv --type stock --title "Shares recovered in the second half of September" \
    --value-title EUR --number-format General --value-min 54 --category-format d \
    --category-title "September 2025" -o share-price.docx

# Categories on two levels
# Two columns of the table make the levels, the outer one first.
quillon-report guests.csv --category Year,Quarter --title "Each summer brings more guests" \
    --number-format "#,##0" --value-step 4000 --gap 30 --colors "#E0A030" -o guests.docx

# Line with error bars
# A column of the table holds the lengths of the error bars.
quillon-report seedlings.csv --type line --markers --title "Growth slows after two weeks" --plus-series Spread \
    --minus-series Spread --value-title "Height, mm" --value-max 140 --value-step 20 --colors "#5B8C3A" -o seedlings.docx

# Logarithmic axis
# Growth by a constant factor is a straight line.
quillon-report users.csv --type line --log 10 --markers --title "Users grow tenfold every two years" \
    --value-title Users -o users.docx

# Radar
# Two profiles over the same criteria, in points from 0 to 10.
quillon-report bicycles.csv --type radar --title "Two bicycles, two purposes" --value-max 10 --value-step 2 \
    --no-value-axis --markers --legend right -o bicycles.docx

# Pie, pulled apart
# Few slices, labelled where they are.
quillon-report day.csv --type pie --title "Where the hours of a day go" --labels category,value \
    --label-position outEnd --label-format '0.0" h"' --explosion 6 --legend none \
    --palette "#34568B,#E98973,#88B2CC,#E7B10A,#7FA99B,#A9907E" -o day.docx

# A target line and the one below it
# A column of the table is the target, drawn as a dashed line; one category has a colour of its own.
quillon-report punctuality.csv --type column --line Target --dashed Target --title "Only line 3 missed its target" \
    --category-title Line --value-title "Trains on time, %" --value-max 100 --value-step 20 --gap 50 \
    --series-colors "On time=#8FA8BF,Target=#404040" --category-colors "3=#C0504D" -o punctuality.docx

# Forecast
# The forecast is a column of its own, which starts with the last number that is known.
quillon-report forecast.csv --type line --gaps --dashed Forecast --title "Next year passes half a million visitors" \
    --value-title "Visitors, thousand" --value-min 0 --series-colors "Visitors=#1F4E79,Forecast=#1F4E79" \
    -o forecast.docx

# Schedule
# Bars from start to end: the starts carry the bars and are not seen.
quillon-report schedule.csv --type bar --stacking normal --hidden Start --title "We move in after 25 weeks" \
    --labels value --label-format '0" wk"' --value-title Week --value-step 5 --gap 40 \
    --series-colors "Weeks=#3D7EA6" -o schedule.docx

# Pareto
# The largest causes first, and the share that they add up to on a second axis.
quillon-report defects.csv --type column --line "Share of all" --second "Share of all" --markers \
    --title "Two causes make three fifths of all defects" --value-title Defects --value-max 60 --value-step 15 \
    --second-format 0% --second-min 0 --second-max 1 --second-step 0.25 --gap 20 --legend top -o defects.docx

# A chart for a margin
# No axis, no gridlines, labels only, three inches wide.
quillon-report downtime.csv --title "Hours of downtime a year" --labels value --gridlines none --no-value-axis \
    --gap 30 --width 3in --height 2in -o downtime.docx
